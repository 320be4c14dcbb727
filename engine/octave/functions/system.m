% Runs a program, as Octave does, but the program's output becomes Octave's, with Octave's line ends.

function varargout = system (command, varargin)
  if (nargin > 1 || nargout > 1 || ! ischar (command))
    [varargout{1:nargout}] = builtin ("system", command, varargin{:});
    return;
  end
  if (ispc ())
    [status, printed] = builtin ("system", command);
    printed = strrep (printed, "\r\n", "\n");
  else
    % A file, since a pipe would stay open as long as a program in the background holds it.
    % In the engine's folder, which is removed even if this Octave is ended meanwhile.
    file = tempname (getenv ("SOLVANE_ENGINE_FOLDER"));
    unwind_protect
      status = builtin ("system", ["exec >'" file "'\n" command]);
      printed = fileread (file);
    unwind_protect_cleanup
      unlink (file);
    end_unwind_protect
  end
  puts (printed);
  varargout = {status};
end
