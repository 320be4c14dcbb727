% Would wait for ever.

function varargout = input (varargin)
  solvaneNobodyAnswers ("input");
end
