% Takes commands from the automation server until it is gone. Each runs in the base workspace.

function solvaneEngine ()
  % What a Matlab script puts on the path may well bear the name of a function of Octave's.
  warning ("off", "Octave:shadowed-function");
  page_screen_output (false);

  system = {"linux", "windows"}{ispc () + 1};
  if (ispc () && isempty (strfind (computer ("arch"), "64")))
    system = "windows32";
  end
  engine = fileparts (mfilename ("fullpath"));
  folders = [fullfile(engine, system) pathsep() fullfile(engine, "functions") pathsep() engine];
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
