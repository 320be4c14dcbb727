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
  addpath ([fullfile(engine, system) pathsep() fullfile(engine, "functions") pathsep() engine]);
  given = path ();

  % A handle is found whatever a script makes of the path.
  link = @SolvaneEngineLink;
  link ("connect", pwd ());
  while (ischar (command = link ("receive")))
    given = putBack (given);
    builtin ("echo", "off", "all");
    [printed, failure] = perform (command);
    if (isempty (failure))
      link ("send", printed);
    else
      link ("fail", failure);
    end
    if (! isempty (regexp (command, '^\s*(addpath|rmpath)\>', "once")))
      given = path ();
    end
  end
  % The client may have removed the current folder, in which Octave does not end quietly.
  warning ("off", "all");
  builtin ("cd", engine);
end

% Scripts may take away folders that commands, this engine or Octave have put on the path, and with them all
% functions but the built-in ones.
function given = putBack (given)
  now = path ();
  if (strcmp (now, given))
    return;
  end
  between = pathsep ();
  for folder = regexp (given, between, "split")
    if (isempty (strfind ([between now between], [between folder{1} between])))
      builtin ("path", given, now);
      given = path (); % without those that are gone
      return;
    end
  end
end

% The failure is empty where there was none. A function that reads from a terminal ends the capture of what is
% printed, errors included; so a mark has to come out at its end.
function [printed, failure] = perform (command)
  mark = "\4";
  failure = "";
  printed = evalc ("failure = run (command); builtin (\"puts\", mark);");
  if (! isempty (printed) && printed(end) == mark)
    printed(end) = [];
  elseif (isempty (failure))
    failure = ["what the command printed is lost: a function in it, such as input, waits for a user, and " ...
               "there is none"];
  end
end

function failure = run (command)
  failure = "";
  try
    evalin ("base", command);
  catch
    failure = lasterr ();
  end
end
