% Waits for some seconds, as Octave does. Fails without a number, since it would wait for a key forever.

function pause (varargin)
  if (nargin == 0 || isequal (varargin{1}, Inf))
    solvaneNobodyAnswers ("pause");
  end
  builtin ("pause", varargin{:});
end
