% Would wait for ever.

function varargout = kbhit (varargin)
  solvaneNobodyAnswers ("kbhit");
end
