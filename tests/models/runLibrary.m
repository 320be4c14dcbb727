function units = runLibrary (program, folder, generation, rows)
  % Runs many units of the library in one flowsheet, one after the other.
  % rows: unit's name, model's folder, changed parameters as names and values in a row, changed feeds: rows of number,
  %   key and value, a composition as names and amounts; a model's error becomes the report 'Refusal'
  % units: by name, with feeds, products (streams as the host's JSON has them, and flows, a column), p, its
  %   parameters, and reports
  c = compounds ();
  flowsheet = struct ('generation', generation, 'compounds', {c.names}, 'streams', {{}}, 'units', {{}});
  for row = rows'
    [name, model, values, feeds] = row{:};
    place = fullfile (folder, model);
    given = jsondecode (fileread (fullfile (place, 'case.json')), 'makeValidName', false);
    unit = struct ('name', name, 'model', asCase (given.model, place), 'parameters', struct (), ...
                   'feeds', struct (), 'products', struct ());
    for i = 1:2:numel (values)
      unit.parameters.(values{i}) = values{i + 1};
    end
    for i = 1:numel (given.feeds)
      feed = item (given.feeds, i);
      for change = feeds(cellfun (@(number) isequal (number, i), feeds(:, 1)), :)'
        feed.(change{2}) = change{3};
      end
      unit.feeds.(feed.name) = [name ' ' feed.name];
      feed.name = [name ' ' feed.name];
      flowsheet.streams{end + 1} = feed;
    end
    for product = given.products'
      unit.products.(product{1}) = [name ' ' product{1}];
    end
    flowsheet.units{end + 1} = unit;
  end
  scratch = tempname ();
  mkdir (scratch);
  [case_file, result_file] = deal (fullfile (scratch, 'case.json'), fullfile (scratch, 'result.json'));
  handle = fopen (case_file, 'w');
  fputs (handle, jsonencode (flowsheet));
  fclose (handle);
  [code, text] = system (sprintf ('%s %s run %s --json %s </dev/null 2>&1', program{:}, case_file, result_file));
  if (code != 0)
    error ('generation %s: exit code %d\n%s', generation, code, text);
  end
  result = jsondecode (fileread (result_file));
  confirm_recursive_rmdir (false, 'local');
  rmdir (scratch, 's');
  if (! isempty (result.warnings))
    error ('generation %s: warnings %s', generation, jsonencode (result.warnings));
  end
  streams = struct ();
  for stream = result.streams'
    stream.flows = stream.totalFlow * cell2mat (struct2cell (stream.fraction));
    streams.(stream.name) = stream;
  end
  units = struct ();
  for i = 1:numel (result.units)
    unit = flowsheet.units{i};
    take = @(ports) cellfun (@(name) streams.(name), struct2cell (ports));
    units.(unit.name) = struct ('feeds', take (unit.feeds), 'products', take (unit.products), ...
                                'p', item (result.units, i).parameters, 'reports', item (result.units, i).reports);
  end
end

function model = asCase (model, place)
  % Paths from anywhere; lists of one element stay lists.
  absolute = @(name) fullfile (place, name);
  model.script = absolute (model.script);
  if (isfield (model, 'files'))
    model.files = cellfun (absolute, model.files, 'UniformOutput', false);
  end
  model.parameters = arrayfun (@(i) item (model.parameters, i), 1:numel (model.parameters), 'UniformOutput', false);
end

function value = item (list, i)
  if (iscell (list))
    value = list{i};
  else
    value = list(i);
  end
end
