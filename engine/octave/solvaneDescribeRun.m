% What a run printed, in terms of the user's files. An error's message loses paths and lines of the unit's own, and at the
% end stand its place and the lines of the user's files that led there, innermost first, such as
%   at tidy.m line 3, column 5
%   at script line 12, column 1
% The run script catches the error and prints it, so the output shows whether there was one. A run gets a warning if Octave
% leaves out the end of the script. `unclosed` finds mistakes of the syntax, and `link` the command that a wrong name may
% mean. Files in the folders of `path`, the library's and Octave's own, are left out of places.
% Everything that this calls is built in: the script may have changed the path.

function printed = solvaneDescribeRun (printed, path, unclosed, link)
  mlock (); % each run forgets the other functions, and would read this one again
  printed = withUsersCalls (printed);
  fault = lasterror ();
  mark = "Evaluation error: ";
  if (isempty (strfind (printed, mark)))
    done = "MATLAB done\n";
    if (! isempty (strfind (printed, done)))
      printed = withWarning (printed, hiddenPart ([pwd() filesep()], unclosed), done);
    end
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
    if (! isempty (strfind (message, "block comment")))
      printed = withoutParsersWarning (printed);
    end
  else
    hidden = hiddenPart (folder, unclosed);
    meant = @(name) meantCommand (name, path, link);
    [message, calls, isCause] = undefinedName (message, calls, folder, hidden, meant);
    printed = withWarning (printed, hidden, mark, isCause);
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

% Replaces Octave's warnings about what hides the script's last part by one in terms of the script, unless the error says so.
function printed = withWarning (printed, hidden, before, isKnown = false)
  if (isempty (hidden))
    return;
  end
  if (! isKnown)
    at = strfind (printed, before)(end);
    printed = [printed(1:at-1) "warning: " hidden.text ", and what follows it never runs\n" printed(at:end)];
  end
  printed = withoutParsersWarning (printed);
end

function printed = withoutParsersWarning (printed)
  pattern = 'warning: block comment unterminated[^\n]*\nwarning: near line \d+ of file ''unitCalc.m''\n';
  printed = regexprep (printed, pattern, "");
end

% What hides the script's last part: its text, line and column, and the rest of the script from there; empty if nothing
% does. Looks at a script once: at each run it would take time.
function hidden = hiddenPart (folder, unclosed)
  persistent seen = "";
  persistent finding = [];
  hidden = [];
  longest = 1e5;
  file = [folder "unitCalc.m"];
  [info, failed] = stat (file);
  if (failed || info.size > longest)
    return;
  end
  key = sprintf ("%s %d %d %d", folder, info.ino, info.size, info.mtime);
  if (! strcmp (key, seen))
    seen = key;
    script = readText (file);
    finding = unclosed (script, "", Inf, true);
    if (! isempty (finding))
      finding.text = sprintf (finding.text, placeText (file, finding.line, folder));
      starts = [0 find(script == "\n")];
      finding.rest = script(starts(finding.line)+1:end);
    end
  end
  hidden = finding;
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
% and in another one its line is no help. A function of that name in the hidden part of the script is the one that is meant;
% otherwise the name may be that of a command with a mistake.
function [message, calls, isHidden] = undefinedName (message, calls, folder, hidden, meant)
  isHidden = false;
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
  pattern = ['^[ \t]*function\>[^\n(]*\<' name '\>'];
  isHidden = (! isempty (hidden) && ! isempty (regexp (hidden.rest, pattern, "once", "lineanchors")));
  if (isHidden)
    message = [hidden.text " and hides what follows: " message];
    place = struct ("file", [folder "unitCalc.m"], "name", "", "line", hidden.line, "column", hidden.column);
    calls = [place; calls(:)];
  elseif (! isempty (command = meant (name)))
    message = [message "; did you mean '" command "'?"];
  end
end

% The function for scripts that has nearly this name; empty if none has.
function meant = meantCommand (name, path, link)
  meant = "";
  one = "getFeedProp.m";
  file = file_in_path (path, one);
  if (! isempty (file))
    commands = regexprep (glob ([file(1:end-numel(one)) "[a-z]*.m"]), '^.*[/\\]|\.m$', "");
    meant = link ("meant", name, sprintf ("%s ", commands{:}));
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
