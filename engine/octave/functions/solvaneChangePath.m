% Changes the path with a built-in function, but keeps this engine's own folders on it: without them, functions that
% wait for a user would not fail. Calls built-in functions only, since a script may have removed all others.

function varargout = solvaneChangePath (name, varargin)
  warning ("off", "backtrace", "local");
  given = builtin ("path");
  [varargout{1:nargout}] = builtin (name, varargin{:});
  if (strcmp (builtin ("path"), given))
    return;
  end
  engine = regexprep (mfilename ("fullpath"), '[^/\\]+[/\\][^/\\]+$', "");
  folders = regexp (given, pathsep (), "split");
  builtin ("addpath", folders{strncmp (folders, engine, numel (engine))});
end
