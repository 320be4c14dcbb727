% Fails: it would wait forever.

function dbstop (varargin)
  solvaneNobodyAnswers ("dbstop");
end
