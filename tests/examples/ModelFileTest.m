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

% All that a model can hold comes back, and nothing else.
parameters = ['[{"name": "T", "kind": "real", "mode": "input", "value": 260.5, "minimum": 0, "default": 1e-7,' ...
              '  "dimensionality": [0, 0, 0, 0, 1, 0, 0, 0]},' ...
              ' {"name": "duty", "kind": "real", "mode": "output", "value": 1.5e6, "maximum": 2e6},' ...
              ' {"name": "n", "kind": "integer", "mode": "input", "value": -3, "minimum": -5, "maximum": 0},' ...
              ' {"name": "on", "kind": "boolean", "mode": "output", "value": true, "default": false},' ...
              ' {"name": "how", "kind": "string", "mode": "input", "value": "a", "default": "<b>",' ...
              '  "options": ["a", "<b>"], "restricted": true},' ...
              ' {"name": "note", "kind": "string", "mode": "input", "value": ""}]'];
write (file ('data.bin'), char ([255 0 26 13 10]));
write (file ('notes.txt'), "a\nb");
write (file ('full.json'), ['{"compounds": ["methane"], "feeds": [{"name": "F 1", "temperature": 300, "pressure": 1e5,' ...
                            '"flow": 1, "composition": {"methane": 1}}], "products": ["B", "A"], "model": {' ...
                            '"reports": ["Two words", "R"], "script": ["x = 1;", ""], "echo": true, ' ...
                            '"files": ["notes.txt", "data.bin"], "parameters": ' parameters '}}']);
host (0, 'save', file ('full.json'), '-o', file ('full.svm'));
shown = jsondecode (host (0, 'show', file ('full.svm'), '--json'));
expected = struct ('feeds', {{'F 1'}}, 'products', {{'B'; 'A'}}, 'parameters', {jsondecode(parameters)}, ...
                   'reports', {{'Two words'; 'R'}}, 'script', "x = 1;\r\n\r\n", 'echo', true);
expected.files = struct ('name', {'notes.txt'; 'data.bin'}, 'size', {3; 5});
if (! isequal (shown, expected))
  error ('show tells %s', jsonencode (shown));
end
text = host (0, 'show', file ('full.svm'));
expect_text (text, 'n     input   integer  -3          from -5 to 0');
expect_text (text, 'how   input   string   a           default <b>, one of a, <b>');

% A case of the model file gives what the one of the written-out model gives.
host (0, 'save', written, '-o', file ('drum.svm'));
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
