function [result, text] = runCase (program, case_file, generation, changes)
  % Runs a case in the host. changes: rows of a text in the case file and its replacement.
  % result: the host's JSON. A run that fails is an error or, if the caller takes text, an empty result.
  folder = tempname ();
  copyfile (fileparts (case_file), folder);
  changed = fileread (case_file);
  for i = 1:rows (changes)
    if (numel (strfind (changed, changes{i, 1})) != 1)
      error ('%s does not hold one "%s"', case_file, changes{i, 1});
    end
    changed = strrep (changed, changes{i, :});
  end
  case_file = fullfile (folder, 'changed.json');
  result_file = fullfile (folder, 'result.json');
  handle = fopen (case_file, 'w');
  fputs (handle, changed);
  fclose (handle);
  [code, text] = system (sprintf ('%s %s run %s --generation %s --json %s </dev/null 2>&1', program{:}, ...
                                  case_file, generation, result_file));
  result = [];
  if (code == 0)
    result = jsondecode (fileread (result_file));
  elseif (nargout < 2)
    error ('generation %s: exit code %d\n%s', generation, code, text);
  end
  confirm_recursive_rmdir (false, 'local');
  rmdir (folder, 's');
  if (code == 0 && ! strcmp (result.generation, generation))
    error ('asked for generation %s, got %s', generation, result.generation);
  end
end
