% Turns echo on or off. Octave's own "echo on" forgets the functions that are to be echoed; Matlab's does not,
% and scripts for Matlab turn on one after the other. Calls built-in functions only: every run forgets and would read
% all others again.

function echo (varargin)
  persistent functions = {};
  % In apostrophes: the backslash of a Windows path would be an escape in a text in quotation marks.
  quoted = @(words) strrep (words, "'", "''");
  set = @(varargin) ["builtin (\"echo\"" sprintf(", '%s'", quoted (varargin){:}) ");"];
  isSwitch = strcmp (varargin, "on") | strcmp (varargin, "off");
  varargin(! isSwitch) = cellfun (@fileThatRuns, varargin(! isSwitch), "UniformOutput", false);
  evalin ("caller", set (varargin{:}));
  name = varargin(! isSwitch);
  if (! isempty (name))
    functions(cellfun (@(one) any (strcmp (one, name)), functions)) = [];
    if (any (strcmp (varargin, "on")))
      functions(end+1) = name;
    end
  elseif (any (strcmp (varargin, "on")))
    for k = 1:numel (functions)
      evalin ("caller", set (functions{k}, "on"));
    end
  end
end

% A script that is not UTF-8 runs as a copy, which the server makes in a folder "private".
function name = fileThatRuns (name)
  copy = [pwd() filesep() "private" filesep() name ".m"];
  if (exist (copy, "file"))
    name = copy;
  end
end
