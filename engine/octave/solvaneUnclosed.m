% What makes a script unreadable for Octave, which only says where it noticed: a text without its closing quote, or that a
% quote in it ends, a bracket or a block that is not closed, a function that ends unlike the others.
%   finding: the line and column where that begins, and its text with "%s" for the place; empty in doubt
%   fault, faultLine: Octave's message and the line in it. Without a message Octave read the script, and the finding is
%                     what hides the script's last part: an end too many, a block comment, or a function around all
%   isScript: the first function is the one that the unit puts around a user's script, which has no end
% Everything that this calls is built in: the script may have changed the path.

function finding = solvaneUnclosed (script, fault, faultLine, isScript)
  mlock (); % each run forgets the other functions, and would read this one again
  script = script(script != "\r");
  [words, starts] = wordsOf (script);
  seen = struct ("comments", [], ... the block comments around a word
                 "open", struct ("word", {}, "at", {}, "indent", {}), ... likewise the brackets and blocks
                 "passed", [], ... the first block that the indentation of a later end passes over
                 "elseIfs", [], ... each 'if' on the line of its 'else'
                 "functions", struct ("at", {}, "endAt", {}), ...
                 "stop", 0, ... the character at which Octave stopped, or the one before it
                 "isOver", false, "at", 0, "text", "");
  newlines = [0 find(script == "\n")];
  shown = regexp (fault, '\n>>> [^\n]*\n *\^', "match", "once");
  if (! isempty (shown) && faultLine <= numel (newlines))
    seen.stop = newlines(faultLine) + numel (regexp (shown, ' *\^$', "match", "once")) - numel (">>> ");
  end
  for k = 1:numel (words)
    seen = look (seen, words{k}, starts(k), script);
    if (seen.isOver)
      break;
    end
  end
  if (isempty (fault))
    seen = lookForHidden (seen, script);
  elseif (seen.at == 0)
    seen = lookBack (seen, fault, isScript);
  end
  finding = [];
  line = sum (newlines < seen.at);
  if (seen.at > 0 && line <= faultLine)
    finding = struct ("line", line, "column", seen.at - newlines(line), "text", seen.text);
  end
end

% The words that count, and what hides them: comments, continuations and texts. A name before an apostrophe makes it a
% transpose, and one before a dot makes a word a field.
function [words, starts] = wordsOf (script)
  words = {'[%#][^\n]*', '\.\.\.[^\n]*', '"(?:[^"\\\n]|\\.|"")*"', '"[^\n]*', ...
           '(?<![\w)\]}''".])''(?:[^''\n]|'''')*''(?!'')', '(?<![\w)\]}''".])''[^\n]*', '[][(){};]', ...
           ['(?<![\w.])(?:if|for|parfor|while|switch|try|unwind_protect|do|until|function|end|endif|endfor|endparfor|' ...
            'endwhile|endswitch|end_try_catch|end_unwind_protect|endfunction)(?!\w)']};
  either = sprintf ("|%s", words{:});
  [words, starts] = regexp (script, either(2:end), "match", "start");
end

function seen = look (seen, word, at, script)
  if (any (word(1) == "%#"))
    seen = lookAtComment (seen, word, at, script);
  elseif (! isempty (seen.comments) || word(1) == ".")
    return;
  elseif (any (word(1) == "'\""))
    seen = lookAtText (seen, word, at, script);
  elseif (any (word(1) == "([{"))
    seen.open(end+1) = struct ("word", word, "at", at, "indent", 0);
  elseif (any (word(1) == ")]};"))
    seen = lookAtBracketEnd (seen, word, at, script);
  elseif (strncmp (word, "end", 3) || strcmp (word, "until"))
    seen = lookAtEnd (seen, at, indentOf (at, script));
  else
    seen = lookAtBlock (seen, word, at, script);
  end
end

function seen = lookAtComment (seen, word, at, script)
  mark = word(! isspace (word));
  if (numel (mark) != 2 || indentOf (at, script) == 0)
    return;
  elseif (mark(2) == "{")
    seen.comments(end+1) = at;
  elseif (mark(2) == "}" && ! isempty (seen.comments))
    seen.comments(end) = [];
  end
end

function seen = lookAtText (seen, word, at, script)
  quotes = word == word(1);
  if (word(1) == "\"")
    quotes = regexprep (word, '\\.', "") == word(1);
  end
  if (mod (sum (quotes), 2) == 0)
    seen = lookAfterText (seen, word, at, script);
    return;
  end
  seen.isOver = true;
  % Outside of brackets, a blank may part a transpose from what it transposes, and a command from its words.
  before = regexp (script(max (at - 80, 1):at-1), '(\w+|[)\]}]) +$', "tokens", "once");
  if (isInBracket (seen) || isempty (before) || any (strcmp (before{1}, {"case", "if", "while", "until", "switch"})))
    seen = report (seen, at, "the text that starts in %s has no closing quote");
  end
end

% A quote in a text ends it, and Octave stops at the word that follows. After a blank it may be one that is no part of the
% text, unless a quote in the line lacks its partner.
function seen = lookAfterText (seen, word, at, script)
  last = at + numel (word) - 1;
  if (seen.stop <= last || seen.stop > last + 80)
    return;
  end
  rest = regexp (script(last+1:end), '^[^\n]*', "match", "once");
  [to, follows] = regexp (rest, '^ *(\w+)', "end", "tokens", "once");
  if (isempty (to) || seen.stop > last + to + 1 ...
      || (rest(1) == " " && mod (sum (regexprep (rest, '[%#] .*', "") == word(1)), 2) == 0))
    return;
  end
  seen = report (seen, last, sprintf ("the text in %%s ends at the quote before '%s'; write %s for one inside it", ...
                                      follows{1}, word([1 1])));
end

function seen = lookAtBracketEnd (seen, word, at, script)
  if (! isInBracket (seen))
    if (word != ";")
      seen = report (seen, at, ["'" word "' in %s closes no bracket"]);
    end
  elseif (any (strcmp ([seen.open(end).word word], {"()", "[]", "{}"})))
    seen.open(end) = [];
  elseif (word == ";" && seen.open(end).word == "(" && closesOne (regexp (script(at+1:end), '^[^\n]*', "match", "once")))
    seen = report (seen, at, "';' in %s stands between '(' and ')'; write ',' between arguments");
  elseif (word != ";" || seen.open(end).word == "(")
    seen = reportBracket (seen);
  end
end

% Whether the rest of a line closes a bracket that it does not open.
function closes = closesOne (rest)
  rest = regexprep (rest, '''[^'']*''|"[^"]*"|[%#].*', "");
  closes = any (cumsum ((rest == "(") - (rest == ")")) < 0);
end

function seen = lookAtEnd (seen, at, indent)
  if (isInBracket (seen))
    return; % an index
  end
  if (isempty (seen.open))
    if (! isempty (seen.functions) && seen.functions(end).endAt == 0)
      seen.functions(end).endAt = at;
    end
    return;
  end
  indents = [seen.open.indent];
  if (isempty (seen.passed) && indent > 0 && indents(end) > indent && any (indents == indent))
    seen.passed = seen.open(end);
  end
  seen.open(end) = [];
end

function seen = lookAtBlock (seen, word, at, script)
  indent = indentOf (at, script);
  if (isInBracket (seen))
    seen = reportBracket (seen);
  elseif (! strcmp (word, "function"))
    seen.open(end+1) = struct ("word", word, "at", at, "indent", indent);
    if (strcmp (word, "if") && ! isempty (regexp (script(max (at - 80, 1):at-1), '\<else[ \t]+$', "once")))
      seen.elseIfs(end+1) = at;
    end
  elseif (isempty (seen.open))
    seen.functions(end+1) = struct ("at", at, "endAt", 0);
  else
    seen.isOver = true; % blocks of the function before it are open
  end
end

% What only the end of the script shows.
function seen = lookBack (seen, fault, isScript)
  isInconsistent = ! isempty (strfind (fault, "inconsistent function endings"));
  ends = [seen.functions.endAt];
  if (! isempty (seen.comments))
    seen = reportComment (seen);
  elseif (isInBracket (seen))
    seen = reportBracket (seen);
  elseif (! isempty (seen.open) && isempty (strfind (fault, "\n>>> ")))
    block = seen.open(end);
    if (! isempty (seen.passed))
      block = seen.passed;
    end
    elseIf = seen.elseIfs(find (seen.elseIfs >= block.at, 1));
    last = {"end", "until"}{strcmp (block.word, "do") + 1};
    if (strcmp (block.word, "if") && ! isempty (elseIf))
      seen = report (seen, elseIf, "'else if' in %s has no 'end' of its own; write elseif");
    else
      seen = report (seen, block.at, ["'" block.word "' in %s has no '" last "'"]);
    end
  elseif (isInconsistent && isScript && ends(1) == 0)
    seen = report (seen, ends(find (ends, 1)), "'end' in %s ends a function: in a script, functions have no 'end'");
  elseif (isInconsistent && isScript)
    seen = report (seen, ends(1), "'end' in %s ends no block");
  elseif (isInconsistent)
    seen = report (seen, seen.functions(find (ends == 0, 1)).at, ...
                   "the function in %s has no 'end', unlike others in its file");
  end
end

% A script may end the unit's function before functions of its own.
function seen = lookForHidden (seen, script)
  if (! isempty (seen.comments))
    seen = reportComment (seen);
    return;
  end
  seen.at = 0;
  starts = [seen.functions.at numel(script)+1];
  ends = [seen.functions.endAt];
  if (! isempty (ends) && ends(1) > 0
      && hasStatement (script(ends(1)+3:starts(2)-1)))
    seen = report (seen, ends(1), "'end' in %s ends no block");
  elseif (numel (starts) > 2 && ! hasStatement (regexprep (script(1:starts(2)-1), '^[^\n]*\n[^\n]*\n', "")))
    seen = report (seen, starts(2), "the script begins with the function in %s, which nothing calls");
  end
end

function has = hasStatement (script)
  has = ! isempty (regexprep (script, '[%#][^\n]*|[\s,;]', ""));
end

function is = isInBracket (seen)
  is = ! isempty (seen.open) && any (seen.open(end).word(1) == "([{");
end

function seen = reportComment (seen)
  seen = report (seen, seen.comments(1), "the block comment that starts in %s is not closed");
end

function seen = reportBracket (seen)
  k = find (cellfun (@(word) ! any (word(1) == "([{"), {seen.open.word}), 1, "last");
  if (isempty (k))
    k = 0;
  end
  first = seen.open(k + 1);
  seen = report (seen, first.at, ["'" first.word "' in %s is not closed"]);
end

function seen = report (seen, at, text)
  seen.isOver = true;
  seen.at = at;
  seen.text = text;
end

% The column of a word at the begin of a line; otherwise 0.
function indent = indentOf (at, script)
  before = script(max (at - 200, 1):at-1);
  start = find (before == "\n", 1, "last");
  if (isempty (start))
    start = 0;
  end
  indent = (numel (before) - start + 1) * all (isspace (before(start+1:end)));
end
