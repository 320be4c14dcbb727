% Fails: it would wait forever.

function varargout = yes_or_no (varargin)
  solvaneNobodyAnswers ("yes_or_no");
end
