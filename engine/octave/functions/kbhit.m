% Fails: it would wait forever.

function varargout = kbhit (varargin)
  solvaneNobodyAnswers ("kbhit");
end
