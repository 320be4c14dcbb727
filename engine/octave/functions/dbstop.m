% Would wait for ever.

function dbstop (varargin)
  solvaneNobodyAnswers ("dbstop");
end
