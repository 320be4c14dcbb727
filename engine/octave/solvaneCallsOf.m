% Where the user's files call a function, for an error of which Octave knows no place: such as "line 4, line 3 of tidy.m".
% Empty if they do not call it. Everything that this calls is built in: the script may have changed the path.

function text = solvaneCallsOf (name, folder, tools)
  mlock (); % each run forgets the other functions, and would read this one again
  text = "";
  most = 5; % places
  files = readdir (folder);
  files = files(! cellfun (@isempty, regexp (files, '\.m$')));
  files(cellfun (@(file) any (strcmp (file, {"calc.m", "initRun.m", "runUnit.m", "unitCalc.m"})), files)) = [];
  for file = [{"unitCalc.m"}; files(:)]'
    lines = regexp (tools.read ([folder file{1}]), '\n', "split");
    lines = regexprep (lines, '[%#].*', "");
    for line = find (! cellfun (@isempty, regexp (lines, ['(?<![\w.''"])' name '\s*\('])))
      [~, ~, place] = tools.place ([folder file{1}], line, folder);
      most -= 1;
      if (most < 0)
        text = [text ", ..."];
        return;
      end
      text = [text ", "(1:end*! isempty (text)) place];
    end
  end
end
