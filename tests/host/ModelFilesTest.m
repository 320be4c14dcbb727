% Model files as folders and back, and what differs between two.
%   octave-cli ModelFilesTest.m WINE SOLVANEHOST MODELS
addpath (fileparts (mfilename ('fullpath')));

function output = host (code, varargin)
  [got, output] = system ([strjoin([argv()(1:2)' varargin]) ' </dev/null 2>&1']);
  if (got != code)
    error ('%s: exit code %d\n%s', strjoin (varargin), got, output);
  end
end

function list = parts (file)
  % Names and contents of a zip.
  [~, names] = system (['unzip -Z1 ' file]);
  names = strsplit (strtrim (names), "\n");
  list = [names; cellfun(@(name) nthargout (2, @system, ['unzip -p ' file ' ' name]), names, 'UniformOutput', false)];
end

function expect (what, text, expected)
  if (! isequal (strrep (text, "\r", ''), expected))
    error ('%s:\n%s\nexpected:\n%s', what, text, expected);
  end
end

folder = tempname ();
mkdir (folder);
file = @(name) fullfile (folder, name);

% All that a model can hold, with files that unpacking has names for itself.
write (file ('data.bin'), char ([255 0 26 13 10]));
write (file ('Script.m'), "x = 2;\ny = 'ä';");
write (file ('full.json'), ['{"compounds": ["methane"], "feeds": [{"name": "F 1", "temperature": 300,' ...
  '"pressure": 1e5, "flow": 1, "composition": {"methane": 1}}], "products": ["B", "A"], "model": {"reports": ["Two words", "R"],' ...
  '"reportTexts": {"R": "1 < 2\r\n", "Matlab Output": "done"}, "script": ["x = 1;", ""], "echo": true,' ...
  '"files": ["Script.m", "data.bin"], "parameters": [' ...
  '{"name": "T", "kind": "real", "mode": "input", "value": 260.5, "minimum": 0, "default": 1e-7,' ...
  ' "dimensionality": "K"},' ...
  '{"name": "short", "kind": "real", "mode": "input", "value": 1, "dimensionality": [1, 0.5]},' ...
  '{"name": "duty", "kind": "real", "mode": "output", "dimensionality": "W"},' ...
  '{"name": "n", "kind": "integer", "mode": "input", "value": -3, "minimum": -5, "maximum": 0},' ...
  '{"name": "on", "kind": "boolean", "mode": "output", "value": true, "default": false},' ...
  '{"name": "how", "kind": "string", "mode": "input", "value": "a", "default": "<b>", "options": ["a", "<b>"]},' ...
  '{"name": "free", "kind": "string", "mode": "input", "value": "", "options": ["a"], "restricted": false}]}}']);
host (0, 'save', file ('full.json'), '-o', file ('full.svm'));
if (isempty (strfind ([parts(file ('full.svm')){2, :}], '1 &lt; 2')))
  error ('the model file lacks the text of a report');
end
exchanger = fullfile (argv (){3}, 'heat-exchanger.svm');
for model = {file('full.svm'), exchanger}
  host (0, 'unpack', model{1}, '-o', file ('unpacked'));
  host (0, 'save', file ('unpacked/case.json'), '-o', file ('again.svm'));
  if (! isequal (parts (model{1}), parts (file ('again.svm'))))
    error ('%s and the model of its folder differ: %s', model{1}, host (1, 'diff', model{1}, file ('again.svm')));
  end
  expect ('equal models', host (0, 'diff', model{1}, file ('again.svm')), '');
  confirm_recursive_rmdir (false);
  if (strcmp (model{1}, file ('full.svm')))
    rmdir (file ('unpacked'), 's');
  end
end
host (2, 'unpack', exchanger, '-o', file ('unpacked'));

% A parameter, a line more and a line less in the script.
changed = strrep (fileread (file ('unpacked/model.json')), '40000.0', '50000.0');
write (file ('unpacked/model.json'), changed);
script = strsplit (fileread (file ('unpacked/script.m')), "\n", 'CollapseDelimiters', false);
write (file ('unpacked/script.m'), strjoin ([script(1:2), {'% more'}, script(3:9), script(11:end)], "\n"));
host (0, 'save', file ('unpacked/case.json'), '-o', file ('changed.svm'));
line = @(sign, value) sprintf ('%s2: UA: input real in W/K, value %s, minimum 0.0, default %s', ...
                              sign, value, value);
lines = sprintf ('== Parameters\n%s\n%s\n== Script\n+3: %% more\n-10: %s\n', line ('-', '40000.0'), ...
                 line ('+', '50000.0'), script{10});
expect ('difference', host (1, 'diff', exchanger, file ('changed.svm')), ...
        sprintf ('--- %s\n+++ %s\n%s', exchanger, file ('changed.svm'), lines));
host (2, 'diff', exchanger, file ('none.svm'));

% As git shows it.
git = @(command) nthargout (2, @system, ['cd ' folder ' && git -c user.name=a -c user.email=a ' command ' 2>&1']);
git ('init -q .');
git (sprintf ('config diff.svm.textconv "%s diff"', strjoin (argv ()(1:2)')));
write (file ('.gitattributes'), "*.svm diff=svm\n");
copyfile (exchanger, file ('model.svm'));
git ('add model.svm .gitattributes');
git ('commit -qm model');
copyfile (file ('changed.svm'), file ('model.svm'));
shown = regexp (git ('diff model.svm'), '^[-+][^-+].*$', 'match', 'lineanchors', 'dotexceptnewline');
expect ('git''s lines', strjoin (strrep (shown, "\r", ''), "\n"), ...
        strjoin ({regexprep(line ('-', '40000.0'), '2: ', '', 'once'), ...
                  regexprep(line ('+', '50000.0'), '2: ', '', 'once'), '+% more', ['-' strtrim(script{10})]}, "\n"));
rmdir (folder, 's');
disp ('folders and model files are the same models, and their differences show')
