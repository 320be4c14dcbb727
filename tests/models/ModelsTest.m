% The models of the library against closed forms, published values, and balances and equilibria by an equation of state
% that shares no code with the host's, on both generations.
%   octave-cli ModelsTest.m WINE SOLVANEHOST MODELS
here = fileparts (mfilename ('fullpath'));
addpath (here, fullfile (here, '..', 'examples'));

function h = enthalpy (stream, phase)
  h = pengRobinson (phase, stream.temperature, stream.pressure, stream.flows);
end

function s = entropy (phase, T, P, flows)
  [~, s] = pengRobinson (phase, T, P, flows);
end

function heat = gained (u, phase)
  % Enthalpy of the products less that of the feeds, W; all streams are in that phase.
  flow = @(streams) sum (arrayfun (@(one) one.totalFlow * enthalpy (one, phase), streams));
  heat = flow (u.products) - flow (u.feeds);
end

function inEquilibrium (what, vapor, liquid)
  % Equal fugacities, temperatures and pressures.
  present = vapor.flows > 0;
  [~, ~, inVapor] = pengRobinson ('vapor', vapor.temperature, vapor.pressure, vapor.flows);
  [~, ~, inLiquid] = pengRobinson ('liquid', liquid.temperature, liquid.pressure, liquid.flows);
  expectNear (what, (inVapor + log (vapor.flows / vapor.totalFlow))(present), ...
        (inLiquid + log (liquid.flows / liquid.totalFlow))(present), 1e-7);
  expectNear (what, [vapor.temperature vapor.pressure], [liquid.temperature liquid.pressure], 1e-6);
end

function checkTurbine (u, efficiency, sign)
  % sign: 1 for a compressor, -1 for an expander.
  [feed, product] = deal (u.feeds, u.products);
  s = entropy ('vapor', feed.temperature, feed.pressure, feed.flows);
  T = fzero (@(T) entropy ('vapor', T, product.pressure, feed.flows) - s, feed.temperature * [0.6 2.5]);
  expectNear ('isentropic temperature', u.p.isentropicTemperature, T, 1e-6);
  ideal = pengRobinson ('vapor', T, product.pressure, feed.flows) - enthalpy (feed, 'vapor');
  power = feed.totalFlow * ideal * efficiency ^ -sign;
  expectNear ('power', [u.p.gasPower u.p.shaftPower], sign * power * [1 0.97 ^ -sign], 0.05);
  expectNear ('heat', gained (u, 'vapor'), power, 0.05);
  expectNear ('temperature', u.p.outletTemperature, product.temperature, 1e-6);
end

function checkIdealGas (u)
  % Nitrogen at 1 to 2 kPa: the entropy of an ideal gas with the heat capacity of the tables.
  rise = @(T) quadgk (@(t) (31.15 - 1.357e-2 * t + 2.68e-5 * t .^ 2 - 1.168e-8 * t .^ 3) ./ t, 300, T);
  T = fzero (@(T) rise (T) - 8.314462618 * log (2), [300 500]);
  expectNear ('isentropic temperature of an ideal gas', u.p.isentropicTemperature, T, 1e-3);
end

function checkPump (u)
  [feed, product] = deal (u.feeds, u.products);
  [~, ~, ~, v] = pengRobinson ('liquid', feed.temperature, feed.pressure, feed.flows);
  work = feed.totalFlow * v * 1.5e6;
  expectNear ('power', [u.p.power gained(u, 'liquid')], work / 0.75 * [1 1], 0.05);
  expectNear ('head', u.p.head, work / (9.80665 * feed.flows' * compounds ().mass), 1e-2);
  % The liquid is nearly incompressible.
  s = entropy ('liquid', feed.temperature, feed.pressure, feed.flows);
  T = fzero (@(T) entropy ('liquid', T, 2e6, feed.flows) - s, [295 310]);
  ideal = pengRobinson ('liquid', T, 2e6, feed.flows) - enthalpy (feed, 'liquid');
  expectNear ('work against that at constant entropy', work / (feed.totalFlow * ideal), 1, 0.005);
end

function checkDrum (u)
  [vapor, liquid] = deal (u.products(1), u.products(2));
  inEquilibrium ('drum', vapor, liquid);
  expectNear ('drum vapour', u.p.vaporFraction, vapor.totalFlow / u.feeds.totalFlow, 1e-9);
  expectNear ('drum temperature', u.p.temperature, vapor.temperature, 1e-6);
  out = vapor.totalFlow * enthalpy (vapor, 'vapor') + liquid.totalFlow * enthalpy (liquid, 'liquid');
  expectNear ('duty', out - u.feeds.totalFlow * u.feeds.enthalpyF, u.p.duty, 0.05);
end

function checkHalfVapor (u)
  checkDrum (u);
  expectNear ('half vapour', u.p.vaporFraction, 0.5, 1e-9);
end

function checkSubcooled (u)
  expectNear ('products', [u.products.totalFlow], [0 100], 1e-9);
  expectNear ('liquid', enthalpy (u.products(2), 'liquid'), u.products(2).enthalpyF, 1e-3);
end

function checkHeater (u)
  expectNear ('temperature', u.products.temperature, 380, 1e-9);
  expectNear ('duty', u.products.totalFlow * enthalpy (u.products, 'vapor') - 50 * u.feeds.enthalpyF, u.p.duty, 0.05);
end

function checkCooler (u)
  expectNear ('duty', [u.p.duty gained(u, 'vapor')], [-1e5 -1e5], 0.05);
end

function checkSplitter (u)
  expectNear ('shares', [u.products.flows], u.feeds.flows * [0.5 0.3 0.2], 1e-9);
  expectNear ('states', [u.products.temperature u.products.enthalpyF], ...
        [280 280 280, u.feeds.enthalpyF * [1 1 1]], 1e-4);
end

function checkComponents (u)
  share = zeros (13, 1);
  share(1:2) = [0.99 0.4];
  expectNear ('flows', [u.products.flows], u.feeds.flows .* [share, 1 - share], 1e-9);
  expectNear ('temperatures', [u.products.temperature], [280 320], 1e-6);
  expectNear ('duty', [u.products.totalFlow] * [u.products.enthalpyF]' - 100 * u.feeds.enthalpyF, u.p.duty, 1e-3);
end

function checkRefusal (u, text)
  if (isempty (strfind (u.reports.Refusal, text)))
    error ('no refusal "%s" but %s', text, u.reports.Refusal);
  end
end

same = cell (0, 3);
gas = @(P) {1, 'composition', struct('nitrogen', 1); 1, 'pressure', P; 1, 'temperature', 300};
% Name, model, parameters, feeds, check.
library = {
  'valve', 'valve', {}, same, @(u) expectNear ('enthalpy', gained (u, 'vapor'), 0, 0.05)
  'valve on an ideal gas', 'valve', {'outlet pressure', 1e3}, gas(2e3), ...
    @(u) expectNear ('temperature', u.p.outletTemperature, 300, 0.01)
  'pump', 'pump', {}, same, @checkPump
  'compressor', 'compressor', {}, same, @(u) checkTurbine (u, 0.75, 1)
  'compressor of an ideal gas', 'compressor', {'outlet pressure', 2e3}, gas(1e3), @checkIdealGas
  'expander', 'expander', {}, same, @(u) checkTurbine (u, 0.8, -1)
  'heater', 'heater', {}, same, @checkHeater
  'cooler', 'heater', {'specification', 'given duty', 'given duty', -1e5}, gas(1e6), @checkCooler
  'flash drum', 'flash-drum', {}, same, @checkDrum
  'drum at half vapour', 'flash-drum', {'specification', 'drum vapor fraction'}, same, @checkHalfVapor
  'drum without vapour', 'flash-drum', {'specification', 'drum temperature', 'drum temperature', 150}, same, ...
    @checkSubcooled
  'boiler', 'flash-drum', {'specification', 'drum vapor fraction'}, ...
    {1, 'composition', struct('propane', 1)}, @checkHalfVapor
  'mixer', 'mixer', {}, same, @(u) expectNear ('heat', gained (u, 'vapor'), 0, 0.05)
  'splitter', 'splitter', {}, same, @checkSplitter
  'component splitter', 'component-splitter', {}, same, @checkComponents};

for generation = {'1.1', '1.0'}
  units = runLibrary (argv ()(1:2), argv (){3}, generation{1}, library(:, 1:4));
  for row = library'
    try
      u = units.(row{1});
      expectNear ('mass', compounds ().mass' * (sum ([u.products.flows], 2) - sum ([u.feeds.flows], 2)), 0, 1e-9);
      row{5} (u);
    catch failure
      error ('%s, generation %s: %s', row{1}, generation{1}, failure.message);
    end
  end
end

% Without flow.
empty = @(feeds) [num2cell(1:feeds); repmat({'flow'; 0}, 1, feeds)]';
idle = library(cellfun (@(name, model) strcmp (strrep (name, ' ', '-'), model), library(:, 1), library(:, 2)), 1:4);
idle(:, 4) = {empty(2)};
for u = struct2cell (runLibrary (argv ()(1:2), argv (){3}, '1.1', idle))'
  expectNear ('products without flow', sum ([u{1}.products.totalFlow]), 0, 0);
end

% A new case from the library.
function [code, text] = host (varargin)
  [code, text] = system ([strjoin([argv()(1:2)' varargin]) ' </dev/null 2>&1']);
end

[~, list] = host ('new', '--list');
names = cellfun (@(line) strtok (line), strsplit (strtrim (list), "\n"), 'UniformOutput', false);
cases = glob (fullfile (argv (){3}, '*', 'case.json'));
if (! isequal (names(:), cellfun (@(file) strsplit (file, filesep){end - 1}, cases, 'UniformOutput', false)))
  error ('the library is listed as %s', list);
end
folder = tempname ();
for command = {{'new', 'compressor', '-o', folder}, {'run', fullfile(folder, 'case.json')}}
  [code, text] = host (command{1}{:});
  if (code != 0)
    error ('%s: %s', strjoin (command{1}), text);
  end
end
if (host ('new', 'compressor', '-o', folder) != 2)
  error ('new replaces a folder');
end
confirm_recursive_rmdir (false);
rmdir (folder, 's');
printf ('%d units, on both generations\n', rows (library));
