% A place in a file as its user knows it.
%   name: the file's, empty for the script; with its folder if that is not the unit's
%   line: the line in it
%   text: such as "line 3 of tidy.m"

function [name, line, text] = solvaneUsersPlace (file, line, folder)
  mlock (); % each run forgets the other functions, and would read this one again
  name = file;
  if (strncmp (file, folder, numel (folder)))
    % Scripts that are not UTF-8 run as copies in "private".
    name = regexprep (file(numel (folder)+1:end), '^private[/\\]', "");
  end
  if (strcmp (name, "unitCalc.m"))
    name = "";
    line = max (line - 2, 1); % the lines that the unit puts before the script
  end
  text = sprintf ("line %d", line);
  if (! isempty (name))
    text = [text " of " name];
  end
end
