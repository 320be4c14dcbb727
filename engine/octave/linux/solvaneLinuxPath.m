% Converts a path from Windows programs under Wine, or several with ";" between them, to Linux paths. Returns
% anything else unchanged. What is sought as written calls built-in functions only: every run forgets and would read all
% others again.

function path = solvaneLinuxPath (path)
  mlock (); % each run forgets the other functions, and would read this one again
  if (! ischar (path) || isempty (regexp (path, '\\|^[A-Za-z]:', "once")))
    return;
  end
  if (any (path == ";"))
    path = strjoin (cellfun (@translate, strsplit (path, ";"), "UniformOutput", false), pathsep ());
  else
    path = translate (path);
  end
end

function path = translate (path)
  path = strrep (path, '\', "/");
  if (strncmp (path, "//?/unix/", 9))
    path = path(9:end);
  elseif (! isempty (regexp (path, '^[A-Za-z]:', "once")))
    folder = driveFolder (path(1:2));
    names = path(3:end);
    path = [regexprep(folder, '/$', "") regexprep(names, '^/*', "/")];
    if (! exist (path, "file"))
      path = descend (folder, strsplit (names, "/"));
    end
  end
end

% A drive is a link in Wine's folder of devices. Octave's path cannot contain the link's name, which has a colon.
function folder = driveFolder (drive)
  prefix = getenv ("WINEPREFIX");
  if (isempty (prefix))
    prefix = fullfile (getenv ("HOME"), ".wine");
  end
  folder = canonicalize_file_name ([prefix "/dosdevices/" lower(drive)]);
  if (isempty (folder))
    error ("there is no drive %s", drive);
  end
end

% Windows ignores the case of names: a name that does not exist as written is sought in any case.
function path = descend (path, names)
  for k = find (! cellfun (@isempty, names))
    name = names{k};
    if (! exist (fullfile (path, name), "file") && isfolder (path))
      present = readdir (path);
      same = find (strcmpi (present, name), 1);
      if (! isempty (same))
        name = present{same};
      end
    end
    path = fullfile (path, name);
  end
end
