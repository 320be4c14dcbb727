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

function inEquilibrium (what, vapor, liquid, tolerance = 1e-7)
  % Equal fugacities, temperatures and pressures.
  present = vapor.flows > 0;
  [~, ~, inVapor] = pengRobinson ('vapor', vapor.temperature, vapor.pressure, vapor.flows);
  [~, ~, inLiquid] = pengRobinson ('liquid', liquid.temperature, liquid.pressure, liquid.flows);
  expectNear (what, (inVapor + log (vapor.flows / vapor.totalFlow))(present), ...
        (inLiquid + log (liquid.flows / liquid.totalFlow))(present), tolerance);
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

function checkExchanger (u)
  % Two gases: UA is the integral of the duty over the temperature difference.
  inlets = [u.feeds.temperature];
  flows = [u.feeds.totalFlow];
  Q = -flows(1) * (enthalpy (u.products(1), 'vapor') - enthalpy (u.feeds(1), 'vapor'));
  at = @(i, T) flows(i) * pengRobinson ('vapor', T, u.feeds(i).pressure, u.feeds(i).flows);
  T = @(i, q) arrayfun (@(one) fzero (@(T) at (i, T) - at (i, inlets(i)) - one, [250 550]), q);
  UA = quadgk (@(q) 1 ./ (T (1, -q) - T (2, Q - q)), 0, Q, 'RelTol', 1e-8);
  expectNear ('duty', u.p.duty, Q, 0.1);
  expectNear ('UA', [u.p.heatTransfer UA] / 1000, [1 1], 1e-4);
  expectNear ('approach', u.p.smallestApproach, min ([inlets(1) - u.products(2).temperature, ...
                                                      u.products(1).temperature - inlets(2)]), 1e-6);
end

function checkCondenser (u)
  % The pinch is inside: the ends are farther apart.
  expectNear ('approach', u.p.smallestApproach, 10, 1e-6);
  if (! (u.p.pinchTemperature < u.feeds(1).temperature - 1 && u.p.pinchTemperature > u.products(1).temperature + 1))
    error ('the pinch is at an end: %g K', u.p.pinchTemperature);
  end
  heat = @(i) u.products(i).totalFlow * u.products(i).enthalpyF - u.feeds(i).totalFlow * u.feeds(i).enthalpyF;
  expectNear ('heats', [heat(1) heat(2)], u.p.duty * [-1 1], 0.1);
end

function checkFreeWater (u)
  [vapor, light, heavy] = deal (u.products(1), u.products(2), u.products(3));
  inEquilibrium ('vapour and light liquid', vapor, light, 1e-6);
  [~, ~, pure] = pengRobinson ('liquid', heavy.temperature, heavy.pressure, heavy.flows);
  [~, ~, mixed] = pengRobinson ('vapor', vapor.temperature, vapor.pressure, vapor.flows);
  expectNear ('water', mixed(8) + log (vapor.flows(8) / vapor.totalFlow), pure(8), 1e-6);
  expectNear ('free water', heavy.flows(8), heavy.totalFlow, 0);
end

function checkDry (u)
  expectNear ('water', [u.products.flows](8, :), [u.feeds.flows(8) 0 0], 1e-9);
end

function checkColumn (u)
  [top, bottom] = deal (u.products(1).flows, u.products(2).flows);
  expectNear ('recoveries', [top(3) bottom(4)], 0.98 * [30 40], 1e-9);
  expectNear ('Fenske', (top(3) / bottom(3)) * (bottom(4) / top(4)), u.p.relativeVolatility ^ u.p.minimumStages, 1e-6);
  heat = [u.products.totalFlow] * [u.products.enthalpyF]' - u.feeds.totalFlow * u.feeds.enthalpyF;
  expectNear ('duties', u.p.reboilerDuty - u.p.condenserDuty, heat, 0.1);
end

function checkPublishedColumn (u)
  % Benzene and toluene: C. J. Geankoplis, Transport Processes and Unit Operations, 3rd edition (1993), examples
  % 11.4-1 to 11.4-3, by the diagram of McCabe and Thiele.
  expectNear ('minimum reflux ratio', u.p.minimumRefluxRatio, 1.17, 0.1);
  expectNear ('minimum stages', u.p.minimumStages, 5.8, 0.4);
  expectNear ('stages at a reflux ratio of 4', [u.p.refluxRatio u.p.stages], [4 7.6], 0.8);
end

function checkKremser (u)
  % A trace of propane in nitrogen.
  lean = u.products(1);
  flows = [u.feeds.totalFlow];
  [~, ~, gas] = pengRobinson ('vapor', u.p.topTemperature, lean.pressure, u.feeds(2).flows);
  [~, ~, oil] = pengRobinson ('liquid', u.p.bottomTemperature, lean.pressure, u.products(2).flows);
  A = mean ([flows(1), u.products(2).totalFlow]) / (exp (oil(3) - gas(3)) * mean ([flows(2), lean.totalFlow]));
  expectNear ('Kremser', u.p.absorbedShare, (A ^ 4 - A) / (A ^ 4 - 1), 0.01);
end

function checkAbsorber (u)
  [lean, rich] = deal (u.products(1), u.products(2));
  heat = @(liquid, gas) liquid.totalFlow * enthalpy (liquid, 'liquid') + gas.totalFlow * enthalpy (gas, 'vapor');
  expectNear ('heat', heat (rich, lean), heat (u.feeds(1), u.feeds(2)), 0.1);
  expectNear ('propane', u.p.absorbedShare, 1 - lean.flows(3) / u.feeds(2).flows(3), 1e-9);
end

function rate = hydrodealkylation (T, flows)
  % mol/(m3 s) at 35 bar: the published coefficient is for lbmol, minutes, cubic feet and psi.
  p = 3.5e6 / 6894.757 * flows / sum (flows);
  rate = 3.6858e6 * 453.59237 / (60 * 0.028316846592) * exp (-25616 / T) * p(10) * sqrt (p(12));
end

function checkTank (u)
  made = u.products.flows(9);
  expectNear ('volume', made / hydrodealkylation (920, u.products.flows), 20, 0.01);
  heat = u.products.totalFlow * (enthalpy (u.products, 'vapor') - enthalpy (u.feeds, 'vapor'));
  expectNear ('duty', u.p.duty, heat, 0.1);
  expectNear ('conversion', u.p.conversion, made / u.feeds.flows(10), 1e-9);
end

function checkTube (u, T)
  % T: given, or 0 for an adiabatic reactor. The volume is the integral of the extent over the rate.
  made = u.products.flows(9);
  nu = zeros (13, 1);
  nu([1 9 10 12]) = [1 1 -1 -1];
  at = @(x) u.feeds.flows + nu * x;
  heat = @(T, x) pengRobinson ('vapor', T, 3.5e6, at(x)) - enthalpy (u.feeds, 'vapor');
  if (T > 0)
    along = @(x) T;
  else
    along = @(x) fzero (@(T) heat (T, x), [850 1100]);
    expectNear ('heat', gained (u, 'vapor'), 0, 0.1);
  end
  expectNear ('temperature', u.products.temperature, along (made), 1e-5);
  V = quadgk (@(x) arrayfun (@(x) 1 / hydrodealkylation (along (x), at (x)), x), 0, made, 'RelTol', 1e-9);
  expectNear ('volume', V, 10, 0.01);
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
  'component splitter', 'component-splitter', {}, same, @checkComponents
  'heat exchanger', 'heat-exchanger', {}, same, @(u) expectNear ('UA', u.p.heatTransfer, 4e4, 0.1)
  'condenser', 'heat-exchanger', {'specification', 'approach'}, {2, 'flow', 200}, @checkCondenser
  'exchanger of gases', 'heat-exchanger', {'UA', 1000, 'hot pressure drop', 0, 'cold pressure drop', 0}, ...
    {1, 'composition', struct('nitrogen', 1); 1, 'temperature', 500; 2, 'composition', struct('methane', 1); ...
     2, 'flow', 30}, @checkExchanger
  'three outlet separator', 'three-outlet-separator', {}, same, @checkFreeWater
  'hot separator', 'three-outlet-separator', {'temperature', 400}, same, @checkDry
  'shortcut distillation', 'shortcut-distillation', {}, same, @checkColumn
  'published column', 'shortcut-distillation', ...
    {'light key', 'benzene', 'heavy key', 'toluene', 'light key recovery', 0.8698, 'heavy key recovery', 0.9622, ...
     'reflux factor', 3.42, 'condenser pressure', 101300, 'reboiler pressure', 101300}, ...
    {1, 'composition', struct('benzene', 0.45, 'toluene', 0.55); 1, 'temperature', 327.6; 1, 'pressure', 101300}, ...
    @checkPublishedColumn
  'absorber', 'absorber', {}, same, @checkAbsorber
  'dilute absorber', 'absorber', {'stages', 3}, ...
    {1, 'flow', 100; 2, 'composition', struct('nitrogen', 0.9999, 'propane', 1e-4)}, @checkKremser
  'stirred tank reactor', 'stirred-tank-reactor', {}, same, @checkTank
  'plug flow reactor', 'plug-flow-reactor', {}, same, @(u) checkTube (u, 0)
  'isothermal tube', 'plug-flow-reactor', {'adiabatic', false}, same, @(u) checkTube (u, 920)};

% On materials of 1.0 the cases as they are: each unit starts an interpreter.
isCase = strcmp (strrep (library(:, 1), ' ', '-'), library(:, 2));
runs = {'1.1', library; '1.0', library(isCase, :)};
for run = runs'
  units = runLibrary (argv ()(1:2), argv (){3}, run{1}, run{2}(:, 1:4));
  for row = run{2}'
    try
      u = units.(row{1});
      expectNear ('mass', compounds ().mass' * (sum ([u.products.flows], 2) - sum ([u.feeds.flows], 2)), 0, 1e-9);
      row{5} (u);
    catch failure
      error ('%s, generation %s: %s', row{1}, run{1}, failure.message);
    end
  end
end

% Without flow.
empty = @(feeds) [num2cell(1:feeds); repmat({'flow'; 0}, 1, feeds)]';
folders = cellfun (@(file) strsplit (file, filesep){end - 1}, glob (fullfile (argv (){3}, '*', 'case.json')), ...
                   'UniformOutput', false);
idle = [strrep(folders, '-', ' '), folders, repmat({{}}, numel (folders), 1)];
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
if (! isequal (names(:), folders))
  error ('the library is listed as %s', list);
end
folder = tempname ();
for command = {{'new', 'stirred-tank-reactor', '-o', folder}, {'run', fullfile(folder, 'case.json')}}
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
