function setReport(name, content)
%SETREPORT Sets the text of a report.
%
%  setReport(name, content)
%
%  name     name of the report, in any case of its letters
%  content  text, with lines ended by char(10)
%
%  The text goes through the file report.txt in the working folder.
%
%  Example: setReport('Duties', sprintf('Heater: %g W\n', 1.5e6))
%
%  See also LOGMESSAGE.

if nargin ~= 2
    error('setReport: expected 2 arguments. Usage: setReport(name, content)');
end
bytes = CapeOpenUnitMex('reportBytes', content);
script = runScript();
path = [script(1:end-length('runUnit.m')) 'report.txt'];
[file, reason] = fopen(path, 'w');
if file < 0
    error(['setReport: report.txt cannot be written: ' reason]);
end
fwrite(file, bytes, 'uint8');
fclose(file);
% A full disk shows in the size alone.
if sizeOf(path) ~= length(bytes)
    error('setReport: report.txt cannot be written');
end
CapeOpenUnitMex('setReport', name);

% Each run of Octave reads again the functions that are not built in, as dir and fullfile are, and a dozen that those call.
function bytes = sizeOf(path)
bytes = -1;
file = fopen(path);
if file >= 0
    fseek(file, 0, 'eof');
    bytes = ftell(file);
    fclose(file);
end

% The file of the run script that is running. The user's script may have changed the current folder, and if units share
% an interpreter, the path has a run script of each.
function file = runScript()
try
    calls = dbstack('-completenames');
    file = calls(strcmp({calls.name}, 'runUnit')).file;
catch
    file = which('runUnit'); % a Matlab that does not know the option, or nothing runs
end
