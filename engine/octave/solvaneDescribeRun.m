% What a run printed, in terms of the user's files. An error's message loses paths and lines of the unit's own, and at the
% end stand its place and the lines of the user's files that led there, innermost first, such as
%   at tidy.m line 3, column 5
%   at script line 12, column 1
% The run script catches the error and prints it, so the output shows whether there was one. A run gets a warning if Octave
% leaves out a part of the script, or finds a file of the user in place of a function of its own. Files in the folders of
% `path`, the library's and Octave's own, are left out of places.
%   run: the folder in which it began, and its last error
% Everything that this calls is built in, or among the handles of `tools`: the script may have changed the path.

function printed = solvaneDescribeRun (printed, run, path, tools)
  mlock (); % each run forgets the other functions, and would read this one again
  [folder, fault] = {run.folder, run.fault}{:};
  if (! isempty (strfind (printed, "warning: ")))
    printed = withUsersCalls (withUsersConditions (printed, folder, tools));
  end
  mark = "Evaluation error: ";
  if (isempty (strfind (printed, mark)))
    done = "MATLAB done\n";
    if (! isempty (strfind (printed, done)))
      printed = withWarning (withHidingFiles (printed, folder, done), hiddenPart (folder, tools), done);
      printed = withUsersLines (printed, folder, tools);
    end
    return;
  elseif (isempty (fault.message) || isempty (strfind (printed, [mark fault.message])))
    return;
  end
  called = builtInFunctionIn (fault.message);
  calls = fault.stack;
  if (isempty (calls) && ! isempty (called)) % Octave forgot where it was
    places = tools.callsOf (called, folder, tools);
    if (! isempty (places))
      printed = strrep (printed, [mark fault.message], [mark fault.message "; " called " is called in " places]);
    end
    return;
  end
  outermost = find (strcmp ({calls.name}, "runUnit"), 1);
  if (isempty (outermost))
    return;
  end
  calls = calls(1:outermost-1);
  hidden = hiddenPart (folder, tools);
  [message, calls, isKnown] = tools.explain (fault.message, calls, folder, hidden, path, tools);
  printed = withWarning (withHidingFiles (printed, folder, mark), hidden, mark, isKnown);
  printed = strrep (printed, [mark fault.message], [mark message]);
  known = regexp (path, pathsep (), "split");
  known = cellfun (@(one) [one filesep()], known(! strcmp (known, ".")), "UniformOutput", false);
  for k = 1:numel (calls)
    printed = [printed lineOf(calls(k), called, folder, known, tools)];
    called = regexprep (calls(k).name, '^.*>', "");
  end
  printed = withUsersLines (printed, folder, tools);
end

% The function that an error names as its own, if it is no call in the stack; otherwise empty.
function name = builtInFunctionIn (message)
  name = regexp (message, '^\w+(?=: )', "match", "once");
  if (! any (strcmp (__builtins__ (), name)))
    name = "";
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

% Octave warns of each '=' in a condition, with the path and line of the unit's copy.
function printed = withUsersConditions (printed, folder, tools)
  start = "warning: suggest parenthesis around assignment used as truth value near line ";
  pattern = [start '(\d+)[^\n'']*''([^\n]+)''\n(?:warning: called from\n(?: {4}[^\n]+ at line \d+ column -?\d+\n)+\n?)?'];
  [warnings, parts] = regexp (printed, pattern, "match", "tokens");
  for k = 1:numel (warnings)
    [~, ~, place] = tools.place (parts{k}{2}, str2double (parts{k}{1}), folder);
    printed = strrep (printed, warnings{k}, ["warning: '=' in " place " assigns and does not compare\n"]);
  end
end

% A script that catches an error may print Octave's message, with a line of unitCalc.m if the name stands there.
function printed = withUsersLines (printed, folder, tools)
  [faults, parts] = regexp (printed, '''([\w.]+)'' undefined near line (\d+),? column (\d+)', "match", "tokens");
  if (isempty (faults))
    return;
  end
  file = [folder "unitCalc.m"];
  lines = regexp (tools.read (file), "\n", "split");
  for k = 1:numel (faults)
    [name, line, column] = {parts{k}{1}, str2double(parts{k}{2}), str2double(parts{k}{3})}{:};
    if (line <= numel (lines) && strncmp (lines{line}(min (column, end+1):end), name, numel (name)))
      [~, ~, place] = tools.place (file, line, folder);
      printed = strrep (printed, faults{k}, ["'" name "' undefined in " place]);
    end
  end
end

% Replaces Octave's warnings about what hides the script's last part by one in terms of the script, unless the error says so.
function printed = withWarning (printed, hidden, before, isKnown = false)
  if (isempty (hidden))
    return;
  end
  if (! isKnown)
    printed = insert (printed, ["warning: " hidden.text ", and what follows it never runs\n"], before);
  end
  pattern = 'warning: block comment unterminated[^\n]*\nwarning: near line \d+ of file ''unitCalc.m''\n';
  printed = regexprep (printed, pattern, "");
end

function printed = insert (printed, text, before)
  at = strfind (printed, before)(end);
  printed = [printed(1:at-1) text printed(at:end)];
end

% Many functions of Octave and of the unit call its built-in ones, and a file in the run's folder comes before them.
function printed = withHidingFiles (printed, folder, before)
  persistent seen = {};
  persistent warnings = "";
  names = readdir (folder);
  if (numel (names) != numel (seen) || ! all (strcmp (names, seen)))
    seen = names;
    ownNames = regexprep (names, '\.m$', "");
    areFunctions = ! strcmp (names, ownNames) & cellfun (@(name) any (strcmp (__builtins__ (), name)), ownNames);
    warnings = "";
    for hiding = names(areFunctions)'
      warnings = [warnings "warning: " hiding{1} " hides Octave's own function of that name\n"];
    end
  end
  if (! isempty (warnings))
    printed = insert (printed, warnings, before);
  end
end

% What hides the script's last part: its text, line and column, and the rest of the script from there; empty if nothing
% does. Looks at a script once: at each run it would take time. The time when it was written does not show whether it is
% the same: it may have changed within that second.
function hidden = hiddenPart (folder, tools)
  persistent seen = "";
  persistent finding = [];
  hidden = [];
  longest = 1e5;
  file = [folder "unitCalc.m"];
  [info, failed] = stat (file);
  if (failed || info.size > longest)
    return;
  end
  script = tools.read (file);
  if (! strcmp (script, seen))
    seen = script;
    finding = tools.unclosed (script, "", Inf, true);
    if (! isempty (finding))
      [~, ~, place] = tools.place (file, finding.line, folder);
      finding.text = sprintf (finding.text, place);
      starts = [0 find(script == "\n")];
      finding.rest = script(starts(finding.line)+1:end);
    end
  end
  hidden = finding;
end

% The line of a call, and the column of the name that it calls: Octave has the statement's first line, and the column of its
% first operator, in bytes.
function text = lineOf (call, called, folder, known, tools)
  text = "";
  inFolder = strncmp (call.file, folder, numel (folder));
  isKnown = @() any (cellfun (@(one) strncmp (call.file, one, numel (one)), known));
  if (call.line < 1 || isempty (call.file) || (! inFolder && isKnown ()))
    return;
  end
  lines = [regexp(tools.read (call.file), "\n", "split") {""}];
  if (! isempty (called))
    [call.line, call.column] = placeOfName (called, lines, call.line, call.column);
  end
  [name, line] = tools.place (call.file, call.line, folder);
  if (isempty (name))
    name = "script";
  end
  text = sprintf ("at %s line %d", name, line);
  if (call.column > 0)
    before = lines{min (call.line, end)}(1:min (call.column - 1, end));
    text = [text sprintf(", column %d", call.column - sum (before >= 128 & before < 192))];
  end
  text = [text "\n"];
end

% Where the statement that begins in a line has the name, if it has it once; otherwise the place that is known.
function [line, column] = placeOfName (name, lines, line, column)
  found = [];
  for k = line:numel (lines)
    code = regexprep (lines{k}, '[%#].*', "");
    for at = regexp (code, ['(?<![\w.''"])' name '(?!\w)'])
      found = [found k at];
    end
    if (isempty (strfind (code, "...")))
      break;
    end
  end
  if (numel (found) == 2)
    [line, column] = {found(1), found(2)}{:};
  end
end
