% Waits for some seconds, as Octave does. Without a number it would wait for a key, for ever.

function pause (varargin)
  if (nargin == 0 || isequal (varargin{1}, Inf))
    solvaneNobodyAnswers ("pause");
  end
  builtin ("pause", varargin{:});
end
