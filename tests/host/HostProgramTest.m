% The host's commands as a user runs them: output streams, exit codes, model files and what a unit loads from them,
% flowsheets.
%   octave-cli HostProgramTest.m WINE SOLVANEHOST EXAMPLES
addpath (fileparts (mfilename ('fullpath')));

function [output, errors] = host (code, varargin)
  % Runs the host with these words and expects the exit code.
  % Into files: the first window starts Wine's desktop, which would keep a pipe open.
  log = tempname ();
  printed = tempname ();
  got = system ([strjoin([argv()(1:2)' varargin]) ' </dev/null >' printed ' 2>' log]);
  output = fileread (printed);
  errors = fileread (log);
  delete (printed);
  delete (log);
  if (got != code)
    error ('%s: exit code %d\n%s', strjoin (varargin), got, errors);
  end
end

function errors = expect_failure (code, message, varargin)
  [output, errors] = host (code, varargin{:});
  expect_text (errors, message);
  if (! isempty (output))
    error ('a failure prints %s to the standard output', output);
  end
end

function result = run_case (file, varargin)
  json = [tempname() '.json'];
  host (0, 'run', file, '--json', json, varargin{:});
  result = jsondecode (fileread (json));
  delete (json);
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

usage = {1, 'unit.json: No component is registered as "No.Such.Unit"', ['run ' file('unit.json')]
         2, 'bad.json: the key "compounds" is missing', ['run ' file('bad.json')]
         2, '/no/such/case.json does not exist', 'run /no/such/case.json'
         2, '/proc/self/mem cannot be read', 'run /proc/self/mem'
         2, 'error: case is required', 'run'
         2, 'See "SolvaneHost run --help"', ['run ' file('unit.json') ' --profile late']
         2, 'error: unknown command "calculate"', 'calculate'
         2, 'error: a command is missing', ''
         2, 'model.svm does not exist', 'show /no/such/model.svm'
         2, 'the case lists units', ['save ' fullfile(examples, 'flowsheet', 'case.json') ' -o ' file('new.svm')]
         1, 'there is no screen', ['edit ' written]
         2, 'the case lists units', ['edit ' fullfile(examples, 'flowsheet', 'case.json')]
         2, 'unit.svm, which exists', ['edit ' file('unit.json')]
         2, 'model.SVM does not exist', 'edit /no/such/model.SVM'
         2, '--feed goes with a model file', ['edit ' written ' --feed name=a']
         2, '--with goes with a model file', ['edit ' written ' --with ' written]
         2, 'the case lists units', ['edit ' file('unit.svm') ' --with ' fullfile(examples, 'flowsheet', 'case.json')]
         2, 'new.svm cannot be written: there is no folder ', ['save ' written ' -o ' file('none/new.svm')]};
copyfile (fullfile (fileparts (written), 'drum.m'), folder);
write (file ('unit.json'), strrep (written_text, '"name": "Drum"', '"progId": "No.Such.Unit"'));
write (file ('bad.json'), '{}');
write (file ('unit.svm'), '');
unsetenv ('DISPLAY');
for i = 1:rows (usage)
  expect_failure (usage{i, :});
end
expect_text (host (0, 'run', '--help'), 'ui-thread-and-worker: created on');
expect_text (host (0, 'help-case'), 'Compounds: methane, ');

% Saves and shows everything that a model can hold, and nothing else.
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
  error ('show prints %s', jsonencode (shown));
end
text = host (0, 'show', file ('full.svm'));
expect_text (text, 'n     input   integer  -3          from -5 to 0');
expect_text (text, 'how   input   string   a           default <b>, one of a, <b>');

% Results in files: of a success, of a failure with what was known before it, of a case that cannot be read.
json = {file('one.json.out'), file('failed.json.out'), file('bad.json.out'), file('many.json.out'), file('recycle.json.out'), ...
        file('target.json.out'), file('missed.json.out')};
write (json{2}, '{"ok": true}'); % of an earlier run
write (json{3}, '{"ok": true}');
host (0, 'run', written, '--json', json{1}, '--csv', file ('streams.csv'), '--reports', file ('reports'), '--units', ...
      'metric');
expect_text (fileread (file ('reports/Drum.txt')), 'Flash drum at 260.00 K');
expect_text (fileread (file ('streams.csv')), "stream,temperature (degC),pressure (bar),flow (kmol/h)");
flowsheet = fileread (fullfile (examples, 'flowsheet', 'case.json'));
write (file ('failing.json'), strrep (strrep (flowsheet, '../..', fullfile (examples, '..')), ...
                                      '"temperature": 310', '"temperature": "50 bar"'));
expect_failure (2, 'Unit "Knock-out drum": Parameter "temperature" cannot be set: "50 bar" has the wrong dimension', ...
                'run', file ('failing.json'));
write (file ('failing.json'), strrep (strrep (flowsheet, '../..', fullfile (examples, '..')), ...
                                      '"pressure": 2.4e6', '"pressure": "1 kPa"'));
expect_failure (1, 'Unit "Membrane": ', 'run', file ('failing.json'), '--json', json{2});
result = jsondecode (fileread (json{2}));
if (result.ok || ! strcmp (result.error.unit, 'Membrane') ...
    || ! isequal ({result.streams.name}, {'Syngas', 'Shifted', 'Dry gas', 'Condensate'}) ...
    || ! isequal ({result.units.status}, {'calculated', 'calculated', 'failed'}) ...
    || result.units(2).parameters.pressure != 1000)
  error ('a failed run leaves %s', jsonencode (result));
end
expect_failure (2, 'bad.json: the key "compounds" is missing', 'run', file ('bad.json'), '--json', json{3});
host (0, 'run', fullfile (examples, 'flowsheet', 'case.json'), '--json', json{4}, '--html', file ('many.html'));
page = fileread (file ('many.html'));
if (system (['xmllint --noout ' file('many.html')]) != 0 || numel (strfind (page, '<rect class="unit"')) != 3 ...
    || numel (strfind (page, '<path class="stream"')) != 6)
  error ('the page is %s', page);
end
% A reactor with a recycle of gas: what enters leaves, and the table of the iterations is printed.
shown = host (0, 'run', fullfile (examples, 'recycle', 'case.json'), '--json', json{5});
expect_text (shown, 'Recycles, method "broyden"');
result = jsondecode (fileread (json{5}));
mass = struct ();
for stream = result.streams'
  mass.(strrep (stream.name, ' ', '_')) = stream.massFlow;
end
if (! result.convergence.converged || numel (result.convergence.iterations) > 8 ...
    || abs (mass.Fresh_gas - mass.Benzene - mass.Purge - mass.Fuel_gas) > 1e-3 * mass.Fresh_gas ...
    || mass.Recycle < 0.3)
  error ('the recycle gives %s', jsonencode (result));
end
expect_failure (2, 'the case has recycles', 'check', fullfile (examples, 'recycle', 'case.json'));

% Targets: the example of the help prints what the page shows; T^2/300 = 350 at T = sqrt(105000); a script that fails at
% an end, and one that fails inside the bracket.
page = fileread (fullfile (examples, '..', 'help', 'pages', 'targets.html'));
shown = regexp (page, '<pre class="target">\n(.*?)</pre>', 'tokens');
options = regexprep (shown{1}{1}, '^SolvaneHost run case.json|\n', '');
printed = host (0, 'run', fullfile (examples, '..', 'models', 'compressor', 'case.json'), options);
if (! strncmp (printed, shown{2}{1}, numel (shown{2}{1})))
  error ('the example prints %s', printed);
end
target = @(condition) write (file ('target.json'), ['{"compounds": ["methane"], "feeds": [{"name": "F", ' ...
  '"temperature": 300, "pressure": 1e5, "flow": 1, "composition": {"methane": 1}}], "products": ["P"], ' ...
  '"model": {"script": ["T = getFeedProp(1, ''temperature'');", "if ' condition '; error(''too hot''); end", ' ...
  '"setProduct(1, 1, 1, ''temperature'', T^2/300, ''pressure'', 1e5);"]}}']);
search = {'run', file('target.json'), '--adjust', '"f.temperature=10 degC:100 degC"', '--target', 'P.temperature=350', '--json'};
target ('T > 373.5');
host (0, search{:}, json{6});
result = jsondecode (fileread (json{6}));
found = result.adjustment.value;
if (abs (found - sqrt (105000)) > 3e-4 || result.streams(1).temperature != found ...
    || abs (result.streams(2).temperature - 350) > 350e-6 || result.adjustment.trials(1).value != 283.15)
  error ('the search finds %s', jsonencode (result));
end
failures = {'T > 350', 'At F.temperature = 100 degC: Calculate failed at script:2:', 2
            'T > 310 && T < 340', 'Calculate failed at script:2:', 3};
for i = 1:rows (failures)
  target (failures{i, 1});
  [~, errors] = host (1, search{:}, json{7});
  expect_text (errors, failures{i, 2});
  expect_text (errors, ": too hot\nerror: ");
  result = jsondecode (fileread (json{7}));
  if (result.ok || result.adjustment.reached || numel (result.adjustment.trials) != failures{i, 3} ...
      || ! isempty (result.adjustment.trials(end).output))
    error ('a failed search leaves %s', jsonencode (result));
  end
end
expect_failure (2, 'requires --target', search{1:4});
expect_failure (2, 'did you mean "P.temperature"?', search{1:5}, 'P.temprature=3');

if (system (strjoin ([{'python3', fullfile(fileparts (mfilename ('fullpath')), 'checkSchema.py'), ...
                       fullfile(examples, '..', 'docs', 'results.schema.json')} json])) != 0)
  error ('the results do not match their schema');
end

% A model file gives the same results as the model written out in the case.
host (0, 'save', written, '-o', file ('drum.svm'));
expect_text (regexprep (host (0, 'show', file ('drum.svm')), ' +', ' '), 'duty output real not set W');
start = strfind (written_text, '"model"');
from_file = @(rest) write (file ('case.json'), [written_text(1:start-1) '"model": "drum.svm"' rest '}']);
from_file ('');
expected = run_case (written);
if (! isequal (run_case (file ('case.json')), expected) ...
    || ! isequal (run_case (file ('case.json'), '--profile', 'early'), expected))
  error ('the model file gives other results than the model in the case');
end

% A parameter value of the case replaces the file's; the message names one that cannot be set.
from_file (', "parameters": { "Temperature": 250, "pressure": 1e6 }');
result = run_case (file ('case.json'));
if (result.streams(2).temperature != 250 || result.streams(3).pressure != 1e6)
  error ('the parameters of the case are not set');
end
failures = {'"temperature": 601', 'Parameter "temperature" cannot be set: the value lies above the maximum, 600'
            '"duty": 1', 'Parameter "duty" cannot be set: it is an output'
            '"pressure": "high"', 'Parameter "pressure" cannot be set: "high" is not a number with a unit, such as "20 bar"'
            '"pressure": true', 'Parameter "pressure" cannot be set: expected a value of kind "real", got true'
            '"level": 1', 'The unit has no parameter "level"; its input parameters: temperature, pressure'};
for i = 1:rows (failures)
  from_file ([', "parameters": {' failures{i, 1} '}']);
  expect_failure (2, failures{i, 2}, 'run', file ('case.json'));
end

% Ports that the file lacks, damaged files, and models that cannot be saved.
from_file ('');
write (file ('port.json'), strrep (fileread (file ('case.json')), '"Vapor"', '"Top"'));
expect_failure (1, 'the unit''s ports: Feed, Vapor, Liquid', 'run', file ('port.json'));
bytes = fileread (file ('drum.svm'));
write (file ('drum.svm'), bytes(1:end/2));
expect_failure (2, 'Model file "drum.svm": Load failed: ', 'run', file ('case.json'));
expect_failure (2, 'drum.svm": Load failed: ', 'show', file ('drum.svm'));
write (file ('empty.txt'), '');
write (file ('empty.json'), strrep (written_text, '"script": "drum.m"', '"script": ["x"], "files": ["empty.txt"]'));
expect_failure (2, 'empty.txt', 'save', file ('empty.json'), '-o', file ('new.svm'));
if (! isempty (glob (file ('new.svm*'))))
  error ('a half file remains');
end
write (file ('größe.txt'), '1');
write (file ('names.json'), strrep (written_text, '"script": "drum.m"', '"script": ["x"], "files": ["größe.txt"]'));
[~, errors] = host (0, 'save', file ('names.json'), '-o', file ('names.svm'));
expect_text (errors, 'the name of the file "größe.txt" has letters beyond ASCII');

% Implausible results are reported, and the run succeeds.
write (file ('odd.json'), strrep (written_text, '"script": "drum.m"', ['"script": ["for i = 1:2", ' ...
  '"setProduct(i, 1, [0.5 0 0 0 0.4], ''temperature'', 300, ''pressure'', 1e5);", "end", ' ...
  '"x = csvread(''odd.csv'');", "%{"], "files": ["odd.csv"]']));
write (file ('odd.csv'), "1,x\n");
shown = host (0, 'run', file ('odd.json'));
expect_text (shown, 'Drum, stream Vapor: the mole fractions sum to 0.9, not to 1');
expect_text (shown, 'Drum, parameter duty: the output has no value');
expect_text (shown, 'Drum, script: the block comment that starts in line 5 is not closed, and what follows it never runs; close');
expect_text (shown, 'Drum, script: "x" in line 1 of odd.csv is not a number, but is read as one; correct the file');
result = run_case (file ('odd.json'));
if (! isequal ({result.warnings.subject}, {'script', 'script', 'stream Vapor', 'stream Liquid', 'parameter duty'}))
  error ('the warnings are %s', jsonencode (result.warnings));
end

write (file ('odd.json'), strrep (written_text, '"script": "drum.m"', ...
  '"script": ["if nComp = 2, pi; end", "e = 1 + eps (2);"], "files": ["eps.m", "zeros.m"]'));
write (file ('eps.m'), "function y = eps (x)\ny = nosuch;\n");
write (file ('zeros.m'), "function y = zeros (x)\ny = 0;\n");
errors = expect_failure (1, '/eps.m:2:5: ''nosuch'' undefined', 'run', file ('odd.json'));
expect_text (errors, 'script: ''='' in line 1 assigns and does not compare; write == to compare');
expect_text (errors, 'script: eps.m hides Octave''s own function of that name; rename the file');

% A reactor that leaves out the heat of reaction, at a pressure without its unit, with a file that csvread does not split.
reactor = @(script) write (file ('reactor.json'), ['{"compounds": ["carbon monoxide", "water", "carbon dioxide", "hydrogen"],' ...
  '"feeds": [{"name": "F", "temperature": 600, "pressure": 2e6, "flow": 10, "composition": {"carbon monoxide": 0.5, ' ...
  '"water": 0.5}}], "products": ["P"], "parameters": {"outlet pressure": 5}, "model": {"files": ["rates.csv"], ' ...
  '"parameters": [{"name": "outlet pressure", "kind": "real", "mode": "input", "dimensionality": "Pa", "value": 1e5}],' ...
  '"script": ["n = [3; 3; 2; 2];", ' script '] }}']);
write (file ('rates.csv'), "600;1,5\n610;1,8\n");
reactor (['"k = csvread(''rates.csv'', 0, 1);", "H = getFeedProp(1, ''enthalpy'');", ' ...
          '"n(strcmp(compNames, ''CO'')) = 2;", ' ...
          '"setProduct(1, 10, n / 10, ''pressure'', getParameter(''outlet pressure''), ''enthalpy'', H);"']);
shown = host (0, 'run', file ('reactor.json'));
lines = regexp (shown, 'warning: .*', 'match', 'dotexceptnewline');
expected = {'the value, 5, has no unit and is read as 5 Pa; state its unit, as in "5 bar"'
            'the numbers in line 1 of rates.csv are separated by semicolons, but are not read so; name the separator'
            'names in the script: script:4: ''CO'' is not the name of a compound; write ''carbon monoxide'': the compounds are'
            'the enthalpies close without those of formation only: the heat of reaction, -8'};
if (numel (lines) != numel (expected))
  error ('the reactor prints %s', shown);
end
cellfun (@expect_text, lines(:), expected);
reactor ('"setProduct(1, 10, n / 10, ''pressure'', 1e5, ''vaporFraction'', 1);"');
expect_failure (1, ['Vapor phase not found for vapor phase flash constraint; in setProduct, ''vaporFraction'' must be the ' ...
                    'first condition'], 'run', file ('reactor.json'));

reactor ('"setProduct(1, n(strcmp(compNames, ''H2'')), n / 10, ''pressure'', 1e5, ''temperature'', n(strcmp(compNames, ''methane'')));"');
errors = expect_failure (1, 'flow must be one real', 'run', file ('reactor.json'));
expect_text (errors, 'warning: Unit, names in the script: script:2: ''H2'' is not the name of a compound; write ''hydrogen''');
expect_text (errors, 'script:2: no compound is named ''methane''; the compounds are ');

write (file ('odd.json'), strrep (written_text, '"script": "drum.m"', '"script": ["function drum", "disp(1)"]'));
errors = expect_failure (1, 'setProduct was not called for product 1', 'run', file ('odd.json'));
expect_text (errors, 'the function in line 1, which nothing calls, and what follows it never runs; write its statements');

% An error comes once, with its place in the user's file at the begin of a line, after what the script printed.
write (file ('calls.m'), "disp('reads')\n\nT = tidy (1);\n");
write (file ('tidy.m'), "function y = tidy (x)\ny = x + nosuch;\n");
write (file ('wrong.json'), strrep (written_text, '"script": "drum.m"', '"script": "calls.m", "files": ["tidy.m"]'));
back = pwd ();
cd (folder);
errors = expect_failure (1, 'Calculate failed at tidy.m:2:9', 'run', 'wrong.json');
cd (back);
expect_text (errors, "Report: Matlab Output\nreads\n\ntidy.m:2:9: 'nosuch' undefined\n    called from calls.m:3:5\nerror: ");
% A product that cannot be flashed has the line that sets it, or those that may.
product = @(number) ["T = getFeedProp(1, 'temperature'); z = getFeedProp(1, 'fraction');\n% setProduct(1, 0, z)\n" ...
                     "i = 1;\nsetProduct(" number ", 1, z, 'temperature', T, 'pressure', 1e5 + 1e12 * (i == 1));\n"];
write (file ('calls.m'), [product('1') "setProduct(2, 1, z, 'temperature', T, 'pressure', 1e5);\n"]);
errors = expect_failure (1, '/calls.m:4: Failed to flash product 1 (', 'run', file ('wrong.json'));
expect_text (errors, 'Calculate failed at ');
write (file ('calls.m'), [product('i') "setProduct(i + 1, 1, z, 'temperature', T, 'pressure', 1e5);\n"]);
expect_failure (1, '/calls.m:5', 'run', file ('wrong.json'));
% What an endless loop prints is cut in the middle.
write (file ('calls.m'), "for i = 1:1e6, disp(i); end\nnosuch\n");
errors = expect_failure (1, "Report: Matlab Output\n1\n2\n", 'run', file ('wrong.json'), '--json', file ('long.json'));
expect_text (errors, " lines left out]\n9");
expect_text (errors, "999999\n1000000\n\n");
text = jsondecode (fileread (file ('long.json'))).reports.MatlabOutput;
if (numel (errors) > 2e4 || numel (text) > 2.1e6 || isempty (strfind (text, ' lines left out]')))
  error ('of what a loop prints, %d bytes are printed and %d kept', numel (errors), numel (text));
end
write (file ('calls.m'), "disp('reads')\n\nT = tidy (1);\n");
% Columns count characters, and a statement of several lines has the one with the call.
write (file ('tidy.m'), "function y = tidy (x)\ny = ... from a table\n\t'größe' + getFeedProp (7, 'pressure');\n");
expect_failure (1, '/tidy.m:3:12: port number out of range', 'run', file ('wrong.json'));
write (file ('tidy.m'), "function y = tidy (x)\nerror(\"no data\\rates.m\");\n");
errors = expect_failure (1, '/tidy.m:2:1: no data\rates.m', 'run', file ('wrong.json'), '--verbose');
expect_text (errors, sprintf ("MATLAB done\nat tidy.m line 2, column 1\nat script line 3, column 5\n"));

% A strict material has no phase before a flash, and its message says what to do.
write (file ('strict.json'), strrep (written_text, '"script": "drum.m"', ...
  '"script": ["getSinglePhaseProperty(''volume'', ''Vapor'', 300, 1e5, [1 0 0 0 0]);"]'));
expect_failure (1, ['Failed to set temperature on material: The phase Vapor is not present; call ' ...
                             'SetPresentPhases first, or a flash that finds it'], 'run', file ('strict.json'), ...
                         '--profile', 'strict');

% A host may terminate or release the unit during its calculation.
expect_failure (1, 'Calculate failed: Terminate has been called on unit operation', 'run', written, '--profile', ...
        'reentrant-terminate');
[~, errors] = host (0, 'run', written, '--profile', 'reentrant-release');
expect_text (errors, 'Release while painting: done');

% A script queries the materials of both generations.
copyfile (fullfile (fileparts (mfilename ('fullpath')), 'MaterialAnswers.m'), folder);
write (file ('answers.json'), ['{"compounds": ["n-pentane", "carbon dioxide", "nitrogen"], "feeds": [{"name": "F",' ...
                               '"temperature": 300, "pressure": 1e5, "flow": 1, "composition": {"nitrogen": 1}}],' ...
                               '"products": [], "model": {"script": "MaterialAnswers.m"}}']);
for generation = {'1.0', '1.1'}
  host (0, 'run', file ('answers.json'), '--generation', generation{:});
end

% The flowsheet of the examples' model files: carbon monoxide reacts, and nothing is lost after the reactor.
result = run_case (fullfile (examples, 'flowsheet', 'case.json'));
flow = struct ();
for stream = result.streams'
  flow.(strrep (stream.name, ' ', '_')) = stream.totalFlow * cell2mat (struct2cell (stream.fraction));
end
shifted = flow.Shifted;
if (norm (shifted - flow.Condensate - flow.Acid_gas - flow.Fuel_gas) > 1e-9 || ! (shifted(1) < flow.Syngas(1)) ...
    || ! isequal ({result.units.name}, {'Shift', 'Knock-out drum', 'Membrane'}))
  error ('the flowsheet does not balance: %s', jsonencode (flow));
end
confirm_recursive_rmdir (false);
rmdir (folder, 's');
disp ('the commands work, and model files keep the model')
