% Fails: it would wait forever.

function varargout = input (varargin)
  solvaneNobodyAnswers ("input");
end
