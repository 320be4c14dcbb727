% An error's message in terms of the user's files, with what probably caused it.
%   calls: the error's place and the lines that led there, innermost first
%   hidden: the part of the script that Octave leaves out; empty for none
%   isKnown: the message explains that part, or Octave could not read the script at all
% Everything that this calls is built in, or among the handles of `tools`: the script may have changed the path.

function [message, calls, isKnown] = solvaneExplainError (message, calls, folder, hidden, path, tools)
  mlock (); % each run forgets the other functions, and would read this one again
  found = regexp (message, '^parse error near line (\d+) of file ([^\n]*)', "tokens", "once");
  isKnown = ! isempty (found);
  if (isKnown)
    [message, place] = parseError (message, found{2}, str2double (found{1}), folder, tools);
    calls = [place; calls(:)];
  else
    message = withRemedy (message, calls, tools);
    [message, calls, isKnown] = undefinedName (message, calls, folder, hidden, path, tools);
  end
end

% Errors of Octave whose message does not show the mistake behind them.
function message = withRemedy (message, calls, tools)
  if (isempty (calls))
    return;
  end
  isComparison = ! isempty (regexp (message, '^mx_el_(?:eq|ne): |^nonconformant|operator ''[=!]='' not', "once"));
  if (isComparison && ! isempty (regexp (lineOf (calls(1), tools), '[=~!]=\s*[''"]|[''"]\s*[=~!]=', "once")))
    message = [regexprep(message, '^mx_el_..: ', "") "; compare texts with strcmp"];
  elseif (! isempty (regexp (message, '^operator \*: nonconformant arguments \(op1 is (\d+x\d+), op2 is \1\)', "once")))
    message = [message "; write .* to multiply element by element"];
  else
    solver = solverIn (calls);
    isOfSlopes = strncmp (solver, "ode", 3) && ...
                 ! isempty (regexp (message, 'nonconformant|^ode15[is]: y0 must have \d+ elements', "once"));
    if (isOfSlopes)
      message = [message "; the function that " solver " calls must return a column of one value for each unknown"];
    elseif (! isempty (solver) && strncmp (message, "Failed to calculate ", 20))
      message = [message ", in a step of " solver]; % no state of the plant
    end
  end
end

% The innermost of the functions that call one of the user's at points of their own choice; empty without one.
function name = solverIn (calls)
  solvers = {"ode45", "ode23", "ode23s", "ode15s", "ode15i", "fzero", "fsolve", "fminsearch", "fminbnd", "fminunc"};
  own = {calls.name};
  own = own(cellfun (@(one) any (strcmp (solvers, one)), own));
  name = [own {""}]{1};
end

function text = lineOf (call, tools)
  text = [regexp(tools.read (call.file), "\n", "split") ""]{min (max (call.line, 1), end)};
end

% Of a statement in several lines, the stack has the first; the message has the name's. It does not say in which file,
% and in another one its line is no help. A function of that name in the hidden part of the script is the one that is meant;
% otherwise the name may be that of a command with a mistake.
function [message, calls, isHidden] = undefinedName (message, calls, folder, hidden, path, tools)
  isHidden = false;
  found = regexp (message, "^('([^']+)' undefined) near line (\\d+),? column (\\d+)$", "tokens", "once");
  if (isempty (found) || isempty (calls))
    return;
  end
  [message, name, line, column] = {found{1:2}, str2double(found{3}), str2double(found{4})}{:};
  script = tools.read (calls(1).file);
  starts = [0 find(script == "\n")];
  if (line <= numel (starts) && strncmp (script(min (starts(line)+column, end):end), name, numel (name)))
    calls(1).line = line;
    calls(1).column = column;
    [~, ~, place] = tools.place (calls(1).file, line, folder);
    message = [message " in " place];
  end
  pattern = ['^[ \t]*function\>[^\n(]*\<' name '\>'];
  isHidden = (! isempty (hidden) && ! isempty (regexp (hidden.rest, pattern, "once", "lineanchors")));
  if (isHidden)
    message = [hidden.text " and hides what follows: " message];
    place = struct ("file", [folder "unitCalc.m"], "name", "", "line", hidden.line, "column", hidden.column);
    calls = [place; calls(:)];
  elseif (! isempty (command = meantCommand (name, path, tools.link)))
    message = [message "; did you mean '" command "'?"];
  elseif (! isempty (keyword = meantKeyword (name, lineOf (calls(1), tools), tools.link)))
    message = [message "; did you mean '" keyword "'?"];
    isHidden = true; % its block's end seems to close another one
  end
end

% The keyword that begins a statement with nearly this name; empty if none does.
function meant = meantKeyword (name, shown, link)
  meant = "";
  if (! isempty (regexp (shown, ['^\s*' name '(?:\s+[\w~(''@[{]|\s*[;,]?\s*(?:%.*)?$)'], "once")))
    meant = link ("meant", name, "for while switch case if elseif else end function otherwise return break continue try catch ");
    if (isempty (meant) && any (strcmpi (name, {"if", "do"}))) % too short to be close to another word
      meant = lower (name);
    end
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
function [message, place] = parseError (message, file, line, folder, tools)
  [name, ~, where] = tools.place (file, line, folder);
  place = struct ("file", file, "name", "", "line", line, "column", 0);
  script = tools.read (file);
  if (any (script == "\0"))
    message = "parse error: the script is not plain text: save it in UTF-8, not in UTF-16";
    if (! isempty (name))
      message = strrep (message, "the script", name);
    end
    place.line = 1;
    return;
  end
  reason = regexp (message, '\n\s*([^\n>][^\n]*)', "tokens", "once");
  shown = regexp (message, '\n>>> ([^\n]*)\n( *)\^', "tokens", "once");
  if (! isempty (shown))
    place.column = numel (shown{2}) + 1 - numel (">>> ");
    stray = tools.strayCharacter (shown{1}, place.column);
    if (! isempty (stray))
      message = ["parse error: " sprintf(stray, where)];
      return;
    end
  end
  finding = tools.unclosed (script, message, line, isempty (name));
  if (! isempty (finding))
    place.line = finding.line;
    place.column = finding.column;
    [~, ~, where] = tools.place (file, finding.line, folder);
    message = ["parse error: " sprintf(finding.text, where)];
    return;
  end
  message = ["parse error in " where];
  if (! isempty (shown) && ! isempty (remedy = remedyFor (shown{1}, place.column)))
    message = [message ": " remedy];
  elseif (! isempty (reason) && ! strcmp (reason{1}, "syntax error"))
    message = [message ": " reason{1}];
  end
  if (! isempty (shown))
    message = [message ": " regexprep(shown{1}, '^\s+|\s+$', "")];
  end
end

% What to write in place of that at which Octave stopped, if other languages have it; empty otherwise.
function remedy = remedyFor (shown, column)
  remedy = "";
  kinds = {'=<$',                                             "write <= for =<"; ...
           '=>$',                                             "write >= for =>"; ...
           '<>$',                                             "write ~= for <>"; ...
           '===$',                                            "write == for ==="; ...
           '//$',                                             "write % to begin a comment"; ...
           '\w\[$',                                           "write an index in parentheses, as in x(1)"; ...
           '(?<![\w.])\d+(?:\.\d*)?[A-Za-z]\w*$',            "write * to multiply by a name"; ...
           '^\s*for\s+\w+\s+in$',                            "write = for in"; ...
           '^\s*(?:if|elseif|while|until)\>.*\sand\s+\w+$',   "write && for and"; ...
           '^\s*(?:if|elseif|while|until)\>.*\sor\s+\w+$',    "write || for or"; ...
           '^\s*(?:if|elseif|while|until)\>[^,;]*[^=<>~!]=$', "write == to compare, '=' assigns"};
  either = {shown(1:min (column, end)), shown(1:min (column+1, end))}; % Octave may stop one column before
  isOne = @(pattern) ! all (cellfun (@isempty, regexp (either, pattern, "once")));
  kind = find (cellfun (isOne, kinds(:,1)), 1);
  if (! isempty (kind))
    remedy = kinds{kind,2};
  end
end
