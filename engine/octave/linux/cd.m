% Changes the current folder, as Octave does, and takes Windows paths. Octave reads all folders of its path again even if
% none has changed, and each run of a unit begins with a change to its folder.

function varargout = cd (varargin)
  mlock (); % each run forgets the other functions, and would read this one again
  warning ("off", "backtrace", "local");
  varargin = cellfun (@solvaneLinuxPath, varargin, "UniformOutput", false);
  if (nargin == 1 && nargout == 0)
    names = SolvaneEngineLink ("changes", varargin{1}, builtin ("path"));
    if (iscell (names))
      if (! isempty (names))
        builtin ("clear", "-f", names{:});
      end
      return;
    end
  end
  [varargout{1:nargout}] = builtin ("cd", varargin{:});
  SolvaneEngineLink ("visit", builtin ("path"));
end
