% The lines that follow the output of a run whose script failed: the place of the error and the lines of the user's
% files that led there, innermost first, such as
%   at tidy.m line 3, column 5
%   at script line 12, column 1
% The run script catches the error and prints it, so the output shows whether there was one. Empty if there was none.
% Files in the folders of `path`, the library's and Octave's own, are left out. Everything that this calls is built in:
% the script may have changed the path.

function text = solvaneErrorStack (printed, path)
  text = "";
  fault = lasterror ();
  if (isempty (fault.message) || isempty (strfind (printed, ["Evaluation error: " fault.message])))
    return;
  end
  calls = fault.stack;
  run = find (strcmp ({calls.name}, "runUnit"), 1);
  if (isempty (run))
    return;
  end
  folder = calls(run).file(1:end-numel ("runUnit.m"));
  known = regexp (path, pathsep (), "split");
  known = cellfun (@(one) [one filesep()], known(! strcmp (known, ".")), "UniformOutput", false);
  calls = atUndefinedName (calls(1:run-1), fault.message);
  [place, isParsed] = parseErrorPlace (fault.message);
  if (isParsed)
    text = lineOf (place, folder, known);
  end
  for k = 1:numel (calls)
    text = [text lineOf(calls(k), folder, known)];
  end
end

function text = lineOf (call, folder, known)
  text = "";
  name = call.file;
  inFolder = strncmp (name, folder, numel (folder));
  isKnown = @() any (cellfun (@(one) strncmp (name, one, numel (one)), known));
  if (call.line < 1 || isempty (name) || (! inFolder && isKnown ()))
    return;
  end
  if (inFolder)
    % Scripts that are not UTF-8 run as copies in "private".
    name = regexprep (name(numel (folder)+1:end), '^private[/\\]', "");
  end
  if (strcmp (name, "unitCalc.m"))
    name = "script";
    call.line = max (call.line - 2, 1); % the lines that the unit puts before the script
  end
  text = sprintf ("at %s line %d", name, call.line);
  if (call.column > 0)
    text = [text sprintf(", column %d", call.column)];
  end
  text = [text "\n"];
end

% Of a statement in several lines, the stack has the first; the message has the name's.
function calls = atUndefinedName (calls, message)
  found = regexp (message, "^'([^']+)' undefined near line (\\d+),? column (\\d+)$", "tokens", "once");
  if (isempty (found) || isempty (calls))
    return;
  end
  [name, line, column] = {found{1}, str2double(found{2}), str2double(found{3})}{:};
  file = fopen (calls(1).file);
  if (file < 0)
    return;
  end
  script = fread (file, Inf, "*char")';
  fclose (file);
  starts = [0 find(script == "\n")];
  if (line <= numel (starts) && strncmp (script(min (starts(line)+column, end):end), name, numel (name)))
    calls(1).line = line;
    calls(1).column = column;
  end
end

function [place, isParsed] = parseErrorPlace (message)
  found = regexp (message, '^parse error near line (\d+) of file ([^\n]*)', "tokens", "once");
  isParsed = ! isempty (found);
  place = struct ("file", "", "line", 0, "column", 0);
  if (isParsed)
    place.file = found{2};
    place.line = str2double (found{1});
    caret = regexp (message, '\n>>> [^\n]*\n( *)\^', "tokens", "once");
    if (! isempty (caret))
      place.column = numel (caret{1}) + 1 - numel (">>> ");
    end
  end
end
