% The flash drum as a model file: what the host writes, shows and loads of it, and the flowsheet of such files.
%   octave-cli ModelFileTest.m WINE SOLVANEHOST EXAMPLES
1;

function text = host (code, varargin)
  program = argv ();
  [got, text] = system ([strjoin([program(1:2); varargin']', ' ') ' </dev/null 2>&1']);
  if (got != code)
    error ('%s: exit code %d\n%s', strjoin (varargin, ' '), got, text);
  end
end

function result = run_case (file, varargin)
  json = [tempname() '.json'];
  host (0, 'run', file, '--json', json, varargin{:});
  result = jsondecode (fileread (json));
  delete (json);
end

function write (file, text)
  handle = fopen (file, 'w');
  fwrite (handle, text);
  fclose (handle);
end

function expect_text (text, part)
  if (isempty (strfind (text, part)))
    error ('"%s" is not in: %s', part, text);
  end
end

examples = argv (){3};
folder = tempname ();
mkdir (folder);
file = @(name) fullfile (folder, name);
written = fullfile (examples, 'flash-drum', 'case.json');
written_text = fileread (written);
model = jsondecode (written_text).model;

host (0, 'save', written, '-o', file ('drum.svm'));
shown = jsondecode (host (0, 'show', file ('drum.svm'), '--json'));
if (! isequal (shown.feeds, {'Feed'}) || ! isequal (shown.products, {'Vapor'; 'Liquid'}) ...
    || ! isequal (shown.reports, model.reports) || ! isempty (shown.files) || shown.echo
    || ! strcmp (shown.script, fileread (fullfile (examples, 'flash-drum', model.script))))
  error ('show tells %s', jsonencode (shown));
end
dimensions = struct ('K', [0 0 0 0 1 0 0 0], 'Pa', [-1 1 -2 0 0 0 0 0], 'W', [2 1 -3 0 0 0 0 0]);
for i = 1:3
  expected = model.parameters{i};
  expected.dimensionality = dimensions.(expected.dimensionality)';
  if (i == 3)
    expected.value = []; % of an output before the first run
  end
  if (! isequal (shown.parameters{i}, expected))
    error ('parameter %d: %s, expected %s', i, jsonencode (shown.parameters{i}), jsonencode (expected));
  end
end
expect_text (host (0, 'show', file ('drum.svm')), 'temperature  input   real  260    K   from 100 to 600, default 260');

% A case of the model file gives what the one of the written-out model gives.
start = strfind (written_text, '"model"');
from_file = @(rest) write (file ('case.json'), [written_text(1:start-1) '"model": "drum.svm"' rest '}']);
from_file ('');
expected = run_case (written);
if (! isequal (run_case (file ('case.json')), expected) ...
    || ! isequal (run_case (file ('case.json'), '--profile', 'early'), expected))
  error ('the model file gives other results than the model in the case');
end

% A value set beside the file counts, and what cannot be set is named.
from_file (', "parameters": { "Temperature": 250, "pressure": 1e6 }');
result = run_case (file ('case.json'));
if (result.streams(2).temperature != 250 || result.streams(3).pressure != 1e6)
  error ('the parameters of the case are not set');
end
refusals = {'"temperature": 601', 'Parameter "temperature" cannot be set: the value lies above the maximum'
            '"duty": 1', 'Parameter "duty" cannot be set: it is an output'
            '"pressure": "high"', 'Parameter "pressure" cannot be set: it is of kind "real"'
            '"level": 1', 'The unit has no parameter "level"'};
for i = 1:rows (refusals)
  from_file ([', "parameters": {' refusals{i, 1} '}']);
  expect_text (host (2, 'run', file ('case.json')), refusals{i, 2});
end

% Ports that the file has not, damaged files, and what cannot be saved.
from_file ('');
write (file ('port.json'), strrep (fileread (file ('case.json')), '"Vapor"', '"Top"'));
expect_text (host (1, 'run', file ('port.json')), 'port "Top"');
bytes = fileread (file ('drum.svm'));
write (file ('drum.svm'), bytes(1:end/2));
expect_text (host (2, 'run', file ('case.json')), 'Model file "drum.svm": Load failed: ');
expect_text (host (2, 'show', file ('drum.svm')), 'drum.svm": Load failed: ');
write (file ('empty.txt'), '');
write (file ('empty.json'), strrep (written_text, '"script": "drum.m"', '"script": ["x"], "files": ["empty.txt"]'));
expect_text (host (2, 'save', file ('empty.json'), '-o', file ('new.svm')), 'empty.txt');
if (! isempty (glob (file ('new.svm*'))))
  error ('a half file remains');
end

% The flowsheet of the examples' model files loses nothing between its units.
result = run_case (fullfile (examples, 'flowsheet', 'case.json'));
flow = struct ();
for stream = result.streams'
  flow.(strrep (stream.name, ' ', '_')) = stream.totalFlow * cell2mat (struct2cell (stream.fraction));
end
if (max (abs (flow.Gas - flow.Heavy - flow.Middle - flow.Leaner)) > 1e-9 ...
    || ! isequal ({result.units.name}, {'Warm drum', 'Cold drum'}))
  error ('the flowsheet does not balance: %s', jsonencode (flow));
end
confirm_recursive_rmdir (false);
rmdir (folder, 's');
disp ('model files keep the model, and are told apart from damaged ones')
