% Reads numbers from a file, as Octave does, but warns of the first cell that is not a number: of text Octave makes 0, and of
% "1.5 bar" or "1,5" the number with which it begins. csvread calls this.

function varargout = dlmread (varargin)
  warning ("off", "backtrace", "local");
  [varargout{1:max (nargout, 1)}] = builtin ("dlmread", varargin{:});
  texts = varargin(cellfun (@ischar, varargin));
  if (! ischar (varargin{1}) || numel (texts) > 2 || any (strcmpi (texts, "emptyvalue")))
    return; % a script that gives a range of a spreadsheet, or what empty cells are, expects them
  end
  separators = ",;: \t";
  if (numel (texts) == 2 && ! isempty (texts{2}))
    separators = do_string_escapes (texts{2});
  end
  corners = varargin(cellfun (@isnumeric, varargin));
  corners = double ([corners{:}]);
  [line, cell] = firstText (texts{1}, separators, [corners [0 0 Inf Inf](numel (corners)+1:end)]);
  if (line > 0)
    warning ("\"%s\" in line %d of %s is not a number, but is read as one", cell, line, texts{1});
  end
end

% The first cell that is not a number, and its line; 0 if there is none. The corners are those of the cells that are read,
% counted from 0.
function [line, cell] = firstText (file, separators, corners)
  [line, cell] = {0, ""}{:};
  handle = fopen (file);
  if (handle < 0)
    return;
  end
  text = fread (handle, 1e7, "*char")';
  fclose (handle);
  number = '[-+]?(?:\d+\.?\d*|\.\d+|inf|nan|na)(?:e[-+]?\d+)?[ij]?';
  isNumber = ['^\s*(?:' number '(?:\s*(?=[-+]|$))){0,2}\s*$'];
  separator = ["[" regexprep(separators, '[]^-]', '\\$0') "]"];
  ends = [0 find(text == "\n") numel(text)+1];
  last = 0;
  for k = lookup (ends, oddOnes (text, separators))
    if (k == last || k <= corners(1) || k > corners(3) + 1)
      continue;
    end
    last = k;
    cells = regexp (text(ends(k)+1:ends(k+1)-1), separator, "split");
    cells = cells(min (corners(2), end)+1:min (corners(4) + 1, end));
    odd = find (cellfun (@isempty, regexp (cells, isNumber, "once", "ignorecase", "emptymatch")), 1);
    if (! isempty (odd))
      [line, cell] = {k, cells{odd}}{:};
      return;
    end
  end
end

% Where characters stand that numbers seldom have. Looking at every cell of a long file would take seconds.
function places = oddOnes (text, separators)
  isPlain = false (1, 256);
  isPlain(double (["0123456789+-. \t\r\n" separators]) + 1) = true;
  places = find (! isPlain(double (text) + 1));
  around = [" " text " "];
  isExponent = (text(places) == "e" | text(places) == "E") & isdigit (around(places)) & isPlain(double (around(places+2)) + 1);
  places(isExponent) = [];
end
