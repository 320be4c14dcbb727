% Runs a program, as Octave does, but what the program prints goes where Octave prints.

function varargout = system (command, varargin)
  if (nargin == 1 && nargout < 2)
    [status, printed] = builtin ("system", command);
    puts (printed);
    varargout = {status};
  else
    [varargout{1:nargout}] = builtin ("system", command, varargin{:});
  end
end
