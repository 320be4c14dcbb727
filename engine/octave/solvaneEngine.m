% Runs commands from the automation server, in the base workspace, until the server ends.

function solvaneEngine ()
  % A Matlab script may put functions on the path that have the names of Octave's own.
  warning ("off", "Octave:shadowed-function");
  page_screen_output (false);

  system = {"linux", "windows"}{ispc () + 1};
  if (ispc () && isempty (strfind (computer ("arch"), "64")))
    system = "windows32";
  end
  engine = fileparts (mfilename ("fullpath"));
  addpath ([fullfile(engine, system) pathsep() fullfile(engine, "functions") pathsep() engine]);
  given = path ();

  % Handles work however a script changes the path.
  link = @SolvaneEngineLink;
  describe = @solvaneDescribeRun;
  tools = struct ("link", link, "explain", @solvaneExplainError, "unclosed", @solvaneUnclosed, ...
                  "strayCharacter", @solvaneStrayCharacter, "callsOf", @solvaneCallsOf, ...
                  "place", @solvaneUsersPlace, "read", @solvaneReadText);
  tools.read (""); % each run calls it, and would read it again if the first one forgot it before it locks itself
  link ("connect", pwd ());
  setenv ("SOLVANE_ENGINE_FOLDER", pwd ());
  while ((command = link ("receive")))
    try
      given = putBack (given);
      builtin ("echo", "off", "all");
      answer = perform (command, @(printed, run) describe (printed, run, given, tools), engine);
      if (! isempty (regexp (command, '^\s*(addpath|rmpath)\>', "once")))
        given = path ();
      end
    catch fault
      answer = {"lose", fault.message};
    end
    link (answer{:});
  end
  % The client may have removed the current folder, without which Octave reports an error when it ends.
  warning ("off", "all");
  builtin ("cd", engine);
end

% Scripts may remove folders from the path that commands, this engine or Octave have added, and with them all
% functions that are not built in.
function given = putBack (given)
  now = builtin ("path");
  if (strcmp (now, given))
    return;
  end
  between = pathsep ();
  for folder = regexp (given, between, "split")
    if (isempty (strfind ([between now between], [between folder{1} between])))
      builtin ("path", given, now);
      given = path (); % without folders that no longer exist
      return;
    end
  end
end

% The text for the link to send. A function that reads from a terminal ends the capture of printed text and of
% errors, so the end of the text must have a mark.
function answer = perform (command, describe, engine)
  mark = "\4";
  began = [builtin("pwd") filesep()];
  printed = evalc ("answer = run (command); builtin (\"puts\", mark);");
  if (isempty (printed) || printed(end) != mark)
    answer = {"lose", ["the output of the command is lost: a function in it waits for a user, as input does, or has " ...
                       "the name of a function that Octave itself needs, such as builtin"]};
  elseif (strcmp (answer{1}, "send"))
    printed(end) = [];
    run = struct ("folder", began, "fault", builtin ("lasterror"));
    describeRun = @() describe (withoutFalseWarnings (printed), run);
    try
      answer{2} = describeRun ();
    catch
      answer{2} = awayFromUser (describeRun, printed, engine);
    end
  end
end

% Functions of the user that have the names of Octave's own do not disturb outside of their folder.
function text = awayFromUser (describeRun, printed, engine)
  text = printed;
  left = builtin ("pwd");
  builtin ("cd", engine);
  builtin ("clear", "-functions");
  try
    text = describeRun ();
  catch
  end
  builtin ("cd", left);
end

% Octave for Windows reads the subfolders of a folder on its path by a name in UTF-8, where Windows expects one in its code
% page, and warns that a folder with letters beyond ASCII does not exist, although it finds the functions in it.
function printed = withoutFalseWarnings (printed)
  pattern = ['warning: load_path: ([^\n]*): No such file or directory\n' ...
             '(?:warning: called from\n(?: {4}[^\n]+ at line \d+ column \d+\n)+\n?)?'];
  [warnings, folders] = regexp (printed, pattern, "match", "tokens");
  for k = 1:numel (warnings)
    if (any (folders{k}{1} > 127) && isfolder (folders{k}{1}))
      printed = strrep (printed, warnings{k}, "");
    end
  end
end

% Functions in the current folder precede Octave's own, and an evalin among them may do anything or nothing: the
% link accepts no answer unless the command has reached the base workspace.
function answer = run (command)
  answer = {"send"};
  try
    evalin ("base", "SolvaneEngineLink (\"begin\");");
    evalin ("base", command);
  catch fault
    answer = {"fail", fault.message};
  end
end
