% The function library and the gateway in a real Octave. EngineStandIn.py stands on the other side, and tells
% what can be asked of it.
1;

% Sets the next answers: int32 and double values, and text with its NUL.
function answerWith(varargin)
  bytes = uint8([]);
  for part = varargin
    if ischar(part{1})
      bytes = [bytes uint8(part{1}) 0];
    else
      bytes = [bytes typecast(part{1}, 'uint8')];
    end
  end
  logMessage('no reply');
  for start = 1:500:length(bytes)
    logMessage(['reply:' sprintf('%02x', bytes(start:min(start + 499, end)))]);
  end
end

function checkError(expected, f, varargin)
  try
    f(varargin{:});
  catch failure
    assert(failure.message, expected);
    return
  end
  error('no error; wanted was: %s', expected);
end

% What the former command cost: its request in hex, messages, bytes in answer.
function [request, messages, bytes] = formerCommand()
  words = strsplit(getUnitName(), ' ');
  request = words{1};
  messages = str2double(words{2});
  bytes = str2double(words{3});
end

function scriptThatClearsAll()
  clear all
  clear functions
  assert(getFeedCount(), 7);
end

global nComp phaseNames
nComp = 2;
phaseNames = {'Vapor' 'Liquid'};
i = @int32;

checkError('getFeedCount: it can only be called from the script of a unit operation, while the unit calculates', ...
           @getFeedCount);
checkError('CapeOpenUnitMex: There is no run of the unit {other}', @CapeOpenUnitMex, 1, '{other}');
CapeOpenUnitMex(1, '{unit}');

% Every function: its help shows the usage that its errors name.
files = dir(fullfile(fileparts(which('getFeedProp')), '*.m'));
functions = setdiff(regexprep({files.name}, '\.m$', ''), 'Contents');
assert(length(functions) > 1);
for k = 1:length(functions)
  name = functions{k};
  arguments = num2cell(1:8);
  if strcmp(name, 'setReport')
    arguments = {1};
  end
  try
    feval(name, arguments{:});
    complaint = '';
  catch failure
    complaint = failure.message;
  end
  usage = regexprep(complaint, ['^' name ': expected \d arguments(, got \d)?\. Usage: '], '');
  assert(! isempty(usage) && ! strcmp(usage, complaint), 'no usage of %s in: %s', name, complaint);
  assert(! isempty(strfind(get_help_text(name), usage)), 'the help of %s lacks: %s', name, usage);
  assert(! isempty(strfind(get_help_text(name), 'Example: ')), 'the help of %s lacks an example', name);
end

% Values beside those of the help book's examples: function, arguments, answer, what is given back.
X = [0.25 0.75];
cases = {
  'setProduct', {1, 10, X', 'temperature', 300, 'pressure', 1e5}, {i(0)}, cell(1, 0)
  'getParameter', {'p'}, {i(0), i(3), "caf\xe9"}, {'café'}
  'setParameter', {'p', true}, {i(0)}, cell(1, 0)
  'getCompoundConstant', {'c'}, {i(0), i(1), '64-17-5', ''}, {{'64-17-5'; ''}}
  'getPropertyUnit', {'p'}, {i(0), ''}, {''}
  'flashEquilibrium', {X, 'temperature', 300, 'pressure', 1e5}, {i(0), i(-1), 'gas', 1, X, 300, 1e5}, ...
    {{'gas'}, 1, X', 300, 1e5}
};
for k = 1:size(cases, 1)
  [name, arguments, answer, expected] = cases{k, :};
  answerWith(answer{:});
  outputs = cell(1, numel(expected));
  [outputs{:}] = feval(name, arguments{:});
  assert(outputs, expected);
end
answerWith(i(0), 'K');
getPropertyUnit('p');
assert(ans, 'K');

% Text: the unit's messages, the code page, and what doesn't fit.
answerWith(i(1), "pas de \xe9");
checkError('pas de é', @getFeedProp, 1, 'Zürich');
assert(formerCommand(), sprintf('%02x', [1 0 0 0 1 0 0 0 double("Z\xfcrich") 0]));
checkError(['getFeedProp: property holds a character that is not in the system''s ANSI code page. ' ...
            'Usage: value = getFeedProp(feed, property)'], @getFeedProp, 1, 'α');
answerWith(i(1), repmat('x', 1, 3000));
checkError(repmat('x', 1, 3000), @getFeedCount);

% A report goes through its file in the code page, and then by its name.
folder = tempname();
mkdir(folder);
home = cd(folder);
answerWith(i(0));
setReport('Duties', "café\n");
file = fopen('report.txt');
bytes = fread(file)';
fclose(file);
assert(bytes, double("caf\xe9\n"));
assert(formerCommand(), sprintf('%02x', [3 0 0 0 double('Duties') 0]));
mkdir('sub');
delete('report.txt');
mkdir('report.txt');
try
  setReport('Duties', 'x');
  complaint = '';
catch failure
  complaint = failure.message;
end
assert(strncmp(complaint, 'setReport: report.txt cannot be written: ', 41));
cd(home);
confirm_recursive_rmdir(false);
rmdir(folder, 's');

% What a command costs: one message where the answer's size is known, and never much more than its data.
for n = [2 20 200]
  nComp = n;
  CapeOpenUnitMex(1, '{unit}');
  answerWith(i(0), i(1), 1:n);
  assert(getFeedProp(1, 'flow'), (1:n)');
  [request, messages, bytes] = formerCommand();
  assert([messages, bytes], [1, 256 + 8 * n]);
end
nComp = 20;
CapeOpenUnitMex(1, '{unit}');
answerWith(i(0), i(2), 1:400);
assert(getSinglePhaseProperty('p', 'Vapor', 300, 1e5, ones(1, 20) / 20), reshape(1:400, 20, 20));
[request, messages, bytes] = formerCommand();
assert([messages, bytes], [2, 8 + 8 * 400]);

% The connection breaks; the run can still be ended, and the next begun.
checkError('logMessage: the connection to the automation server is broken', @logMessage, 'hang up');
checkError('getFeedCount: the connection to the automation server is broken', @getFeedCount);
CapeOpenUnitMex(2);
CapeOpenUnitMex(1, '{unit}');

% A script may clear what it likes.
answerWith(i([0 7]));
scriptThatClearsAll();
CapeOpenUnitMex(2);

% The next run finds the connection of the last, and the gateway with it.
clear functions
global nComp
nComp = 2;
CapeOpenUnitMex(1, '{unit}');
assert(getFeedCount(), 7);
CapeOpenUnitMex(2);
disp('all checked');
