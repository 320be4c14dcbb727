% What a run printed, in terms of the user's files. An error's message loses paths and lines of the unit's own, and at the
% end stand its place and the lines of the user's files that led there, innermost first, such as
%   at tidy.m line 3, column 5
%   at script line 12, column 1
% The run script catches the error and prints it, so the output shows whether there was one. A run without an error gets a
% warning if Octave silently leaves out the end of the script. `unclosed` finds mistakes of the syntax. Files in the
% folders of `path`, the library's and Octave's own, are left out of places.
% Everything that this calls is built in: the script may have changed the path.

function printed = solvaneDescribeRun (printed, path, unclosed)
  mlock (); % each run forgets the other functions, and would read this one again
  printed = withUsersCalls (printed);
  fault = lasterror ();
  mark = "Evaluation error: ";
  if (isempty (strfind (printed, mark)))
    printed = withWarning (printed, [pwd() filesep()], unclosed);
    return;
  elseif (isempty (fault.message) || isempty (strfind (printed, [mark fault.message])))
    return;
  end
  calls = fault.stack;
  run = find (strcmp ({calls.name}, "runUnit"), 1);
  if (isempty (run))
    return;
  end
  folder = calls(run).file(1:end-numel ("runUnit.m"));
  calls = calls(1:run-1);
  message = fault.message;
  found = regexp (message, '^parse error near line (\d+) of file ([^\n]*)', "tokens", "once");
  if (! isempty (found))
    [message, place] = parseError (message, found{2}, str2double (found{1}), folder, unclosed);
    calls = [place; calls(:)];
  else
    [message, calls] = undefinedName (message, calls, folder);
  end
  printed = strrep (printed, [mark fault.message], [mark message]);
  known = regexp (path, pathsep (), "split");
  known = cellfun (@(one) [one filesep()], known(! strcmp (known, ".")), "UniformOutput", false);
  for k = 1:numel (calls)
    printed = [printed lineOf(calls(k), folder, known)];
  end
end

% Octave prints the calls that led to a warning, the run script's and the engine's among them, with lines of unitCalc.m.
function printed = withUsersCalls (printed)
  if (isempty (strfind (printed, "warning: called from\n")))
    return;
  end
  pattern = '^ {4}(runUnit|solvaneEngine|unitCalc)(>\w+)? at line (\d+) column (-?\d+)\n';
  [calls, parts] = regexp (printed, pattern, "match", "tokens", "lineanchors");
  for k = 1:numel (calls)
    [name, line, column] = parts{k}([1 end-1 end]){:};
    users = "";
    if (strcmp (name, "unitCalc"))
      users = sprintf ("    script at line %d column %s\n", max (str2double (line) - 2, 1), column);
    end
    printed = strrep (printed, calls{k}, users);
  end
  printed = strrep (printed, "warning: called from\n\n", "");
end

% Looks at a script once: at each run it would take time.
function printed = withWarning (printed, folder, unclosed)
  persistent seen = "";
  persistent warning = "";
  longest = 1e5;
  done = strfind (printed, "MATLAB done\n");
  [info, failed] = stat ([folder "unitCalc.m"]);
  if (isempty (done) || failed || info.size > longest)
    return;
  end
  key = sprintf ("%s %d %d %d", folder, info.ino, info.size, info.mtime);
  if (! strcmp (key, seen))
    seen = key;
    finding = unclosed (readText ([folder "unitCalc.m"]), "", Inf, true);
    warning = "";
    if (! isempty (finding))
      warning = sprintf (["warning: " finding.text ", and what follows it never runs\n"], ...
                         placeText ([folder "unitCalc.m"], finding.line, folder));
    end
  end
  if (! isempty (warning))
    printed = [printed(1:done(end)-1) warning printed(done(end):end)];
    pattern = 'warning: block comment unterminated[^\n]*\nwarning: near line \d+ of file ''unitCalc.m''\n';
    printed = regexprep (printed, pattern, "");
  end
end

% A place in a file as its user knows it: the name, empty for the script, and the line.
function [name, line] = usersPlace (file, line, folder)
  name = file;
  if (strncmp (file, folder, numel (folder)))
    % Scripts that are not UTF-8 run as copies in "private".
    name = regexprep (file(numel (folder)+1:end), '^private[/\\]', "");
  end
  if (strcmp (name, "unitCalc.m"))
    name = "";
    line = max (line - 2, 1); % the lines that the unit puts before the script
  end
end

function text = placeText (file, line, folder)
  [name, line] = usersPlace (file, line, folder);
  text = sprintf ("line %d", line);
  if (! isempty (name))
    text = [text " of " name];
  end
end

function text = lineOf (call, folder, known)
  text = "";
  inFolder = strncmp (call.file, folder, numel (folder));
  isKnown = @() any (cellfun (@(one) strncmp (call.file, one, numel (one)), known));
  if (call.line < 1 || isempty (call.file) || (! inFolder && isKnown ()))
    return;
  end
  [name, line] = usersPlace (call.file, call.line, folder);
  if (isempty (name))
    name = "script";
  end
  text = sprintf ("at %s line %d", name, line);
  if (call.column > 0)
    text = [text sprintf(", column %d", call.column)];
  end
  text = [text "\n"];
end

function text = readText (file)
  text = "";
  handle = fopen (file);
  if (handle >= 0)
    text = fread (handle, Inf, "*char")';
    fclose (handle);
  end
end

% Of a statement in several lines, the stack has the first; the message has the name's. It does not say in which file,
% and in another one its line is no help.
function [message, calls] = undefinedName (message, calls, folder)
  found = regexp (message, "^('([^']+)' undefined) near line (\\d+),? column (\\d+)$", "tokens", "once");
  if (isempty (found) || isempty (calls))
    return;
  end
  [message, name, line, column] = {found{1:2}, str2double(found{3}), str2double(found{4})}{:};
  script = readText (calls(1).file);
  starts = [0 find(script == "\n")];
  if (line <= numel (starts) && strncmp (script(min (starts(line)+column, end):end), name, numel (name)))
    calls(1).line = line;
    calls(1).column = column;
    message = [message " in " placeText(calls(1).file, line, folder)];
  end
end

% Octave notices most mistakes of a syntax after their place, and some only at the end of the file. Without a better
% explanation, the message has the line of the script that Octave shows.
function [message, place] = parseError (message, file, line, folder, unclosed)
  place = struct ("file", file, "name", "", "line", line, "column", 0);
  finding = unclosed (readText (file), message, line, isempty (usersPlace (file, line, folder)));
  if (! isempty (finding))
    place.line = finding.line;
    place.column = finding.column;
    message = ["parse error: " sprintf(finding.text, placeText (file, finding.line, folder))];
    return;
  end
  reason = regexp (message, '\n\s*([^\n>][^\n]*)', "tokens", "once");
  shown = regexp (message, '\n>>> ([^\n]*)\n( *)\^', "tokens", "once");
  message = ["parse error in " placeText(file, line, folder)];
  if (! isempty (reason) && ! strcmp (reason{1}, "syntax error"))
    message = [message ": " reason{1}];
  end
  if (! isempty (shown))
    place.column = numel (shown{2}) + 1 - numel (">>> ");
    message = [message ": " regexprep(shown{1}, '^\s+|\s+$', "")];
  end
end
