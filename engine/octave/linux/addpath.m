% Adds folders to the path, as Octave does, and takes Windows paths.

function varargout = addpath (varargin)
  warning ("off", "backtrace", "local");
  varargin = cellfun (@solvaneLinuxPath, varargin, "UniformOutput", false);
  [varargout{1:nargout}] = builtin ("addpath", varargin{:});
end
