% Turns echo on or off. Octave's own "echo on" forgets the functions that are to be echoed; Matlab's does not,
% and scripts that are meant for Matlab turn on the one after the other.

function echo (varargin)
  persistent functions = {};
  set = @(varargin) ["builtin (" strjoin(strcat ('"', [{"echo"} varargin], '"'), ", ") ");"];
  evalin ("caller", set (varargin{:}));
  isSwitch = ismember (varargin, {"on", "off"});
  name = varargin(! isSwitch);
  if (! isempty (name))
    functions = setdiff (functions, name);
    if (any (strcmp (varargin, "on")))
      functions(end+1) = name;
    end
  elseif (any (strcmp (varargin, "on")))
    for k = 1:numel (functions)
      evalin ("caller", set (functions{k}, "on"));
    end
  end
end
