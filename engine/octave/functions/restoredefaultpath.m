% Sets the path that Octave starts with, as Octave does.

function varargout = restoredefaultpath (varargin)
  [varargout{1:nargout}] = solvaneChangePath ("restoredefaultpath", varargin{:});
end
