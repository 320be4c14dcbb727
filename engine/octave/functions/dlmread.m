% Reads numbers from a file, as Octave does, but warns of the first line that is read otherwise than it looks: of text Octave
% makes 0, of "1.5 bar" or "1,5" the number with which it begins, of numbers with another separator a part, and of "1,200" two
% numbers. csvread calls this.

function varargout = dlmread (varargin)
  warning ("off", "backtrace", "local");
  [varargout{1:max (nargout, 1)}] = builtin ("dlmread", varargin{:});
  texts = varargin(cellfun (@ischar, varargin));
  if (! ischar (varargin{1}) || numel (texts) > 2 || any (strcmpi (texts, "emptyvalue")))
    return; % a script that gives a range of a spreadsheet, or what empty cells are, expects them
  end
  separators = "";
  if (numel (texts) == 2)
    separators = do_string_escapes (texts{2});
  end
  corners = varargin(cellfun (@isnumeric, varargin));
  corners = double ([corners{:}]);
  fault = firstFault (texts{1}, separators, [corners [0 0 Inf Inf](numel (corners)+1:end)]);
  if (isempty (fault) && isempty (varargout{1}))
    fault = sprintf ("%s has no numbers where it is read", texts{1});
  end
  if (! isempty (fault))
    warning ("%s", fault);
  end
end

% What is read otherwise than it looks; empty if there is nothing. The corners are those of the cells that are read, counted
% from 0.
function fault = firstFault (file, separators, corners)
  fault = "";
  handle = fopen (file);
  if (handle < 0)
    return;
  end
  bytes = fread (handle, 1e7, "*char")';
  if (! feof (handle))
    bytes(find (bytes == "\n", 1, "last")+1:end) = []; % a part of a line
  end
  fclose (handle);
  if (isempty (bytes))
    return;
  end
  if (any (bytes == "\0"))
    fault = sprintf ("%s is not plain text, but is read as such", file);
    return;
  end
  if (strncmp (bytes, char ([239 187 191]), 3))
    bytes(1:3) = []; % the byte order mark
  end
  text = bytes;
  text(text > 127) = "?"; % the expressions read UTF-8 only
  ends = [0 find(text == "\n") numel(text)+1];
  if (isempty (separators))
    separators = usualSeparators (text(ends(min (corners(1) + 1, end - 1))+1:end));
  end
  digits = '(?:\d+\.?\d*|\.\d+|inf|nan|na)(?:e[-+]?\d+)?';
  real = ['\s*[-+]?\s*' digits];
  isNumber = ['^(?:' real '[ij]?|' real '\s*[-+]\s*' digits '[ij]|' real '[ij]\s*[-+]\s*' digits '|)\s*$'];
  isSeveral = ['^' real '\s*([;\t])' real];
  isOdd = @(cells) cellfun (@isempty, regexp (cells, isNumber, "once", "ignorecase", "emptymatch"));
  separator = ["[" regexprep(separators, '[]^-]', '\\$0') "]"];
  last = 0;
  for k = lookup (ends, oddOnes (text, separators))
    if (k == last || k <= corners(1) || k > corners(3) + 1)
      continue;
    end
    last = k;
    cells = regexp (text(ends(k)+1:ends(k+1)-1), separator, "split");
    cells = cells(1:min (corners(4) + 1, end));
    several = regexp (cells, isSeveral, "tokens", "once", "ignorecase");
    several = [several{:}];
    if (! isempty (several))
      names = {"semicolons", "tabs"};
      fault = sprintf ("the numbers in line %d of %s are separated by %s, but are not read so", k, file, ...
                       names{1 + strcmp(several{1}, "\t")});
      return;
    end
    odd = find (isOdd (cells(min (corners(2), end)+1:end)), 1) + corners(2);
    if (! isempty (odd))
      from = ends(k) + sum (cellfun (@numel, cells(1:odd-1)) + 1);
      fault = sprintf ("\"%s\" in line %d of %s is not a number, but is read as one", ...
                       bytes(from + (1:numel (cells{odd}))), k, file);
      return;
    end
  end
  fault = unequalLines (file, text, separators, corners);
end

% The first line that has another number of cells than the one before it, which Octave makes equal by zeros, or more than the
% headings above it. Cells that blanks separate are not counted.
function fault = unequalLines (file, text, separators, corners)
  fault = "";
  if (any (separators == " "))
    return;
  end
  [lines, counts] = cellCounts (text, separators);
  if (any (counts != counts(1)))
    ends = ["[ \t\r" regexprep(separators, '[]^-]', '\\$0') ']+(?=\n|$)'];
    [lines, counts] = cellCounts (regexprep (text, ends, ""), separators);
  end
  counts = min (counts, corners(4) + 1);
  read = find (lines > corners(1) & lines <= corners(3) + 1);
  heading = find (lines <= corners(1), 1, "last");
  other = find (counts(read) != counts(read(1:min (end, 1))), 1);
  if (! isempty (other))
    pair = read([other-1, other]);
  elseif (! isempty (read) && ! isempty (heading) && counts(heading) > 1 && counts(read(1)) > counts(heading))
    pair = [heading, read(1)];
  else
    return;
  end
  fault = sprintf ("lines %d and %d of %s have %d and %d cells, and their columns do not match", lines(pair), file, counts(pair));
end

% The lines that are not empty, and how many cells each has.
function [lines, counts] = cellCounts (text, separators)
  ends = [0 find(text == "\n") numel(text)+1];
  passed = [0 cumsum(ismember (text, separators))];
  counts = diff (passed([1, ends(2:end)])) + 1;
  lines = find (diff (ends) > 1);
  counts = counts(lines);
end

% What Octave takes for the separator if it is given none: what follows the first number of the first line.
function separators = usualSeparators (text)
  separators = regexp (text, '^\s*[^\d\n]*\d[^\n,:; \t]*([,:; \t])', "tokens", "once");
  if (isempty (separators) || isspace (separators{1}))
    separators = " \t";
  else
    separators = separators{1};
  end
end

% Where characters stand that numbers seldom have, and blanks between numbers. Looking at every cell of a long file would take
% seconds.
function places = oddOnes (text, separators)
  isPlain = false (1, 256);
  isPlain(double (["0123456789+-. \t\r\n" separators]) + 1) = true;
  places = find (! isPlain(double (text) + 1));
  around = [" " text " "];
  isExponent = (text(places) == "e" | text(places) == "E") & isdigit (around(places)) & isPlain(double (around(places+2)) + 1);
  places(isExponent) = [];
  for blank = setdiff (" \t", separators)
    blanks = find (text == blank);
    if (isempty (blanks))
      continue;
    end
    isEnd = [diff(blanks) > 1, true];
    begins = blanks([true, isEnd(1:end-1)]);
    ends = blanks(isEnd);
    places = [places begins(isNumeric (around(begins)) & isNumeric (around(ends+2)))];
  end
  places = sort (places);
end

function is = isNumeric (text)
  is = isdigit (text) | text == "." | text == "+" | text == "-";
end
