% What "check" finds in models with one fault each, and that it finds nothing in sound ones.
%   octave-cli CheckTest.m WINE SOLVANEHOST CASE...
addpath (fileparts (mfilename ('fullpath')));

function [checks, printed] = check (code, file, options = '')
  % Runs the checks and returns the names of those that found something.
  json = [tempname() '.json'];
  printed = tempname ();
  got = system ([strjoin([argv()(1:2)' {'check', file, options, '--json', json}]) ' </dev/null >' printed ' 2>&1']);
  text = fileread (printed);
  delete (printed);
  if (got != code)
    error ('check %s: exit code %d\n%s', file, got, text);
  end
  document = jsondecode (fileread (json));
  delete (json);
  checks = {};
  for one = document.checks'
    if (! isempty (one.findings))
      checks{end + 1} = one.check;
    end
  end
  printed = text;
  if (document.ok != isempty (checks))
    error ('"ok" contradicts the findings');
  end
end

function printed = expectFound (expected, script, parts = {}, composition = '{"propane": 0.5, "n-butane": 0.3, "n-pentane": 0.2}', options = '', ...
                                parameters = '')
  % A case of one feed in two phases, with this script.
  folder = tempname ();
  mkdir (folder);
  write (fullfile (folder, 'model.m'), strjoin (script, "\n"));
  compounds = strjoin (regexp (composition, '"[^"]*"', 'match'), ', ');
  write (fullfile (folder, 'case.json'), ['{"compounds": [' compounds '], "feeds": [' ...
    '{"name": "Feed", "vaporFraction": 0.4, "pressure": 5e5, "flow": 10, "composition":' ...
    composition '}], "products": ["Product"], "model": {' parameters '"script": "model.m"}}']);
  [found, printed] = check (! isempty (expected), fullfile (folder, 'case.json'), options);
  if (! isequal (found, expected))
    error ('found in %s, expected %s:\n%s', strjoin (found, ', '), strjoin (expected, ', '), printed);
  end
  for part = parts
    if (isempty (strfind (printed, part{1})))
      error ('"%s" is not in:\n%s', part{1}, printed);
    end
  end
  confirm_recursive_rmdir (false);
  rmdir (folder, 's');
end

function places = placesIn (printed)
  % Without the notes on variables that nothing reads: those of these scripts have no other use.
  places = regexp (printed, 'model\.m:\d+(?!\d*: nothing reads)', 'match');
end

reads = {'F = getFeedProp(1, ''totalFlow'');', 'z = getFeedProp(1, ''fraction'');', ...
  'T = getFeedProp(1, ''temperature'');', 'P = getFeedProp(1, ''pressure'');', ...
  '[phases, parts, x] = getFeedEquilibrium(1);'};
sets = @(T) ['setProduct(1, F, z, ''temperature'', ' T ', ''pressure'', P);'];
light = '{"methane": 0.5, "propane": 0.5}';

expectFound ({'run'}, [reads {'T = T + z(5);', sets('T')}], {'model.m:6'});
expectFound ({'repetition'}, [reads {sets('T + rand')}]);
expectFound ({'plausibility'}, [reads {'F = 0.99 * F;', sets('T')}]);
expectFound ({'plausibility'}, [reads {'P = P/1e5;', sets('T')}], {'to do    pressures are in Pa: 1 bar is 1e5 Pa'});
expectFound ({'plausibility'}, [reads {'z = 0.9 * z;', sets('T')}], ...
  {'to do    divide the composition by its sum', '1 finding.'});
% Failures that show their own remedy.
expectFound ({'profiles'}, [reads(1:4) {'rho = getSinglePhaseProperty(''density'', ''Liquid'', T, P, z);', sets('T + 1e-9 * rho')}], ...
  {'to do    strict simulators know no phase before a flash: call flashEquilibrium first'}, light);
expectFound ({'plausibility', 'order of compounds', 'absent compounds', 'single phases'}, ...
  [reads {'z = z + [-0.1; 0.1; 0];', sets('T')}], ...
  {'the mole fraction of propane, -0.1, is negative', 'to do    no feed has it, and yet it is used up'});
% Each phase is missed alone: also where the bubble point lies below the data, and in a drum whatever the feed's temperature.
phase = @(name) {['own = strcmpi(phases, ''' name ''');'], 'T = T + 1e-9 * x(1, own);', sets('T')};
expectFound ({'single phases'}, [reads phase('vapor')], {'as a liquid below its bubble point (1', ' K, 5e+05 Pa): ', 'model.m:8:1: '}, light);
expectFound ({'single phases'}, [reads phase('liquid')], ...
  {'as a vapour above its dew point (2', ' K, 5e+05 Pa): ', 'model.m:8:1: ', '1 finding.'}, light);
drum = '[phases, parts, x] = flashEquilibrium(z, ''temperature'', 300, ''pressure'', 4e5);';
expectFound ({'absent compounds', 'single phases'}, [reads {drum} phase('vapor')], {'of n-pentane alone (', 'model.m:9:1: '});
expectFound ({'absent compounds', 'single phases'}, [reads {drum} phase('liquid')], {'of propane alone (', 'model.m:9:1: '});
% Each fault changes or breaks what the others leave alone.
expectFound ({'profiles', 'order of compounds', 'absent compounds', 'no flow', 'single phases', 'leftovers'}, ...
  [reads {'T = T + z(2) + parts(1);', 'T = T + 1 / z(1);', 'liquid = x(:, strcmpi(phases, ''liquid''));', ...
  'T = T + liquid(1);', 'T = T + 0 / F;', 'open = fopen(''log.txt'', ''w'');', 'cd(''..'');', sets('T')}], ...
  {'profile liquid-first', 'propane absent', '8 files open after 8 runs', 'another current folder'});
expectFound ({}, [reads {'setProduct(1, F, z, ''pressure'', P, ''enthalpy'', getFeedProp(1, ''enthalpy''));'}], ...
  {'nothing to reverse: the case has one compound', 'nothing to vary: without any of the compounds a feed would be empty'}, ...
  '{"propane": 1}');
% A run that does not end says where, while it lasts and in the end, and the other checks go on.
expectFound ({'no flow', 'tolerances'}, [reads {'while F == 0, end', 'options = optimset(''TolX'', 1);', sets('T')}], ...
  {'Still running after ', ' s: feed Feed without flow: unit "Unit"', 'model.m:6:9: The run did not end within the limit of 11 s'}, ...
  light, '--limit 11');
% An input that counts for nothing, beside one that counts and one that only limits.
input = @(name) ['{"kind": "real", "mode": "input", "value": 2, "maximum": 3, "name": "' name '"}'];
expectFound ({'parameters'}, [reads {'rate = getParameter(''volume'') * exp(-47400 / (8.314e-3 * T));', ...
  sets('T + getParameter(''rise'') + rate')}], {'parameter volume: no result changes with it', ...
  'by an activation energy in other units than R', 'to do    no line of the script has its name'}, light, '', ...
  ['"parameters": [' strjoin({input('volume'), input('rise'), input('largest step'), input('diameter')}, ', ') '], ']);
% A bend at the feed's pressure is no noise, nor is one beside it, even where its slope begins without end. A feed below the
% temperatures of the package's data is no fault of the model.
expectFound ({}, [reads {sets('T + 1e-5 * max(0, P - 5e5) + 1e-2 * sqrt(max(0, 4.95e5 - P))')}], {}, '{"nitrogen": 0.5, "oxygen": 0.5}');
% Steps beside which nothing changes, in an output and in a part of it.
expectFound ({'noise'}, [reads {sets('round(T)')}], {'temperature of stream Product jumps by 0.003 of its size where the pressure of'});
expectFound ({'noise'}, [reads {'table = [0.9 1.1];', sets('T + 10 * table(1 + (P > 5.07e5))')}], ...
  {' of stream Product jumps by 0.06 of its size where the pressure of feed Feed is 5.07e+05 Pa'});
expectFound ({'noise', 'tolerances'}, [reads {'options = optimset(''TolX'', 1e-2); % or ''TolX'', 1', ...
  'x = fzero(@(x) x^3 - T, [1 100], options);', sets('x^3 + 1e-3 * sin(1e4 * P)')}], {'model.m:6: TolX is 1e-2'});

% Lines with "wrong" have names that no phase has, and are all that is found.
comparisons = {'vapor = strcmpi(phases, ''vapor'') | strcmp(phases, ''Vapor'');', ...
  'vapor = find(strcmpi(phases, ''vapour'')); % wrong', 'vapor = strcmp (phaseNames, "vapor"); % wrong', ...
  'second = strcmp(phases, ''Liquid2'') | ismember(lower(phases), {''vapor'', ''gas''});', ...
  'if strcmpi(phases{1}, ''Gas'') || strcmp(''mass'', ''gas''), T = 300; end % wrong', ...
  'kind = ''gas''; if strcmp(kind, ''vap''), T = 300; end', '% strcmp(phases, ''vapour'')', '%{', ...
  'strcmp(phases, ''vapour'')', '%}', 'wanted = {''Vapor'', ''Liq''}; % wrong', 'for i = 1:2', ...
  '  at = find(strcmpi(phases, wanted{i}));', 'end', '[names, ~] = ...', '  flashEquilibrium(z, ''pressure'', P, ...', ...
  '  ''temperature'', T);', 'first = names{1};', 'if strcmp(first'', "liquid "), T = 300; end % wrong', ...
  'if first(1:3) == ''Vap'', kind = ''%''; end', 'if false && lower(first) == ''vapour'', T = 300; end % wrong', ...
  'switch lower(first)', '  case {''vapor'', ''gas''}', '  case ''liquids'' % wrong', '    kind = 1;', 'end'};
names = [reads comparisons {sets('T')}];
places = sprintf ('model.m:%d ', find (! cellfun (@isempty, strfind (names, '% wrong'))));
printed = expectFound ({'phase names'}, names, {'write ''Vapor'': the phases are ''Vapor'' and ''Liquid'''});
found = sprintf ('%s ', unique (placesIn (printed), 'stable'){:});
if (! strcmp (found, places))
  error ('wrong names of phases: found %s, expected %s', found, places);
end
% The same for compounds: names of the package's other compounds and of others, formulas beside a right name, names in a
% call with names of its own, and what a second search replaces are no mistakes.
comparisons = {'light = strcmpi(compNames, ''Propane'') | strcmp(compNames, ''C3'');', ...
  'share = ones(1, nComp); share(strcmpi(compNames, ''butane'')) = 0.1; % wrong', ...
  'k = find(strcmp(compNames, ''n-Butane'')); % wrong', 'k = ismember({''C5H12'', ''water''}, compNames); % wrong', ...
  'k = strcmp(compNames, ''propene'') | strcmp(compNames, ''i-butane'') | strcmp(compNames, ''n-butanol'') | strcmp(compNames, ''carbon dioxide'');', ...
  'if any(strcmp(compNames, ''n_pentane'')), k = 1; end % wrong', 'k = strcmp(compNames, ''porpane''); % wrong', ...
  'k = strcmp(compNames, ''74-98-6''); % wrong', 'if false, k = strcmpi(compNames, getParameter(''butane'')); end', ...
  'heavy = find(strcmp(compNames, ''nC5''));', 'if isempty(heavy)', '  heavy = find(strcmp(compNames, ''n-pentane''));', 'end', ...
  'own = {''butane''}; k = strcmp(own, ''butane'');', 'for i = 1:nComp', '  switch compNames{i}', ...
  '    case {''C4'', ''n-butane'', ''methane''}', '      k = 1;', '    case ''pentane'' % wrong', '      k = 2;', '  end', 'end'};
names = [reads comparisons {sets('T')}];
places = sprintf ('model.m:%d ', find (! cellfun (@isempty, strfind (names, '% wrong'))));
printed = expectFound ({'compound names'}, names, ...
  {'write ''n-butane'': the compounds are ''propane'', ''n-butane'' and ''n-pentane'''});
found = sprintf ('%s ', unique (placesIn (printed), 'stable'){:});
if (! strcmp (found, places))
  error ('wrong names of compounds: found %s, expected %s', found, places);
end
% What only Octave understands and globals that keep values are notes, and the model stays fit.
notes = {'k = 0; k += 1; % note', 'if (k != 1), T = 300; endif # note', 'k++; % note', 'd = size(z)(1); % note', ...
  'text = "a\tb"; % note', 'h = @(x)(x + 1); rows = 3; k = rows(1); s = ''a += !b #''; t = z''; ok = k >= -1 & k ~= 2;', ...
  'printf(''%s'', ''''); k = toupper(''x''); % note', 'k = getFeedProp(1, "fraction"); % note', ...
  'if false, ode45(@(t, y) slope(t, y), [0 1], 1); end', 'global count % note', 'count = [count 1];', 'global fresh; fresh = 2;', ...
  'if false, k = calls(1) + calls(2); end', 'do % note', '  k = 3;', 'until k == 3 % note'};
functions = {'function y = calls(x)', 'persistent n table; % note', 'if isempty(n), n = 0; end', 'if isempty(table), table = 1:3; end', ...
  'n = n + 1; y = table(x);', 'function d = slope(t, y)', 'p = [t, y];', 'd = [t, p(1)]; % note'};
names = [reads notes {sets('T')} functions];
printed = expectFound ({}, names, {'language            ok       the model needs Octave', ...
  'Matlab does not know ''+=''; write x = x + 1', '''count'' from run to run; set it in each run', ' ''endif''; write end'});
found = sprintf ('%s ', unique (placesIn (printed)){:});
places = cellfun (@(line) sprintf ('model.m:%d', line), num2cell (find (! cellfun (@isempty, regexp (names, '[%#] note$')))), ...
                  'UniformOutput', false);
places = sprintf ('%s ', sort (places){:});
if (! strcmp (found, places))
  error ('notes: found %s, expected %s', found, places);
end
% A comparison that fails may also be the cause of a failed run.
expectFound ({'run'}, [reads {'T = T + parts(find(strcmp(phases, ''vapor''))(1));', sets('T')}], ...
  {'model.m:6: ''vapor'' is not the name of a phase'});
expectFound ({'run'}, [reads {'k = find(strcmp(compNames, ''water''));', 'setProduct(1, F + z(k), z, ''temperature'', T, ''pressure'', P);'}], ...
  {'model.m:6: no compound is named ''water'''});

% Each takes some 15 s: without ./test --long, the models that iterate or look for phases.
iterating = {'absorber', 'flash-drum', 'heat-exchanger', 'plug-flow-reactor', 'shortcut-distillation'};
for file = argv ()(3:end)'
  [~, model] = fileparts (fileparts (file{1}));
  if (! isempty (getenv ('SOLVANE_LONG')) || any (strcmp (model, iterating)))
    check (0, file{1});
  end
end
