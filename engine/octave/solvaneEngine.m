% Takes commands from the automation server until it is gone. Each runs in the base workspace.

function solvaneEngine ()
  % What a Matlab script puts on the path may well bear the name of a function of Octave's.
  warning ("off", "Octave:shadowed-function");
  page_screen_output (false);

  systems = {"linux", "windows"};
  engine = fileparts (mfilename ("fullpath"));
  folders = [fullfile(engine, systems{ispc () + 1}) pathsep() fullfile(engine, "functions") pathsep() engine];
  addpath (folders);

  % A handle is found whatever a script makes of the path.
  link = @SolvaneEngineLink;
  link ("connect");
  while (ischar (command = link ("receive")))
    if (isempty (strfind (path (), folders)))
      addpath (folders);
    end
    builtin ("echo", "off", "all");
    printed = evalin ("base", ["evalc (\"" undo_string_escapes(command) "\"," ...
                               "\"disp (['??? ' lasterr()])\")"]);
    link ("send", printed);
  end
  % The client may have removed the current folder, in which Octave does not end quietly.
  warning ("off", "all");
  builtin ("cd", engine);
end
