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
  while ((command = link ("receive")))
    try
      given = putBack (given);
      builtin ("echo", "off", "all");
      answer = perform (command);
      if (! isempty (regexp (command, '^\s*(addpath|rmpath)\>', "once")))
        given = path ();
      end
    catch fault
      answer = {"lose", fault.message};
    end
    link (answer{:});
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

% What the link sends. A function that reads from a terminal ends the capture of what is printed, errors
% included; so a mark has to come out at its end.
function answer = perform (command)
  mark = "\4";
  printed = evalc ("answer = run (command); builtin (\"puts\", mark);");
  if (isempty (printed) || printed(end) != mark)
    answer = {"lose", ["what the command printed is lost: a function in it waits for a user, who is not there, " ...
                       "as input does, or has the name of one that Octave itself needs, such as builtin"]};
  elseif (strcmp (answer{1}, "send"))
    answer{2} = printed(1:end-1);
  end
end

% Functions of the current folder go before Octave's own, and an evalin among them may do anything or nothing:
% the link takes no answer unless that of the base workspace has come by.
function answer = run (command)
  answer = {"send"};
  try
    evalin ("base", "SolvaneEngineLink (\"begin\");");
    evalin ("base", command);
  catch fault
    answer = {"fail", fault.message};
  end
end
