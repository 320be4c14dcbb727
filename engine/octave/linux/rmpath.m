% Removes folders from the path, as Octave does, and takes Windows paths.

function varargout = rmpath (varargin)
  warning ("off", "backtrace", "local");
  varargin = cellfun (@solvaneLinuxPath, varargin, "UniformOutput", false);
  [varargout{1:nargout}] = builtin ("rmpath", varargin{:});
end
