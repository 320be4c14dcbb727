% Would wait for ever.

function keyboard (varargin)
  solvaneNobodyAnswers ("keyboard");
end
