% Changes the current folder, as Octave does, and takes Windows paths.

function varargout = cd (varargin)
  warning ("off", "backtrace", "local");
  varargin = cellfun (@solvaneLinuxPath, varargin, "UniformOutput", false);
  [varargout{1:nargout}] = builtin ("cd", varargin{:});
end
