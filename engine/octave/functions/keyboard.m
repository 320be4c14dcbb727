% Fails: it would wait forever.

function keyboard (varargin)
  solvaneNobodyAnswers ("keyboard");
end
