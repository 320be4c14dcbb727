% Shows or changes the path, as Octave does.

function varargout = path (varargin)
  [varargout{1:nargout}] = solvaneChangePath ("path", varargin{:});
end
