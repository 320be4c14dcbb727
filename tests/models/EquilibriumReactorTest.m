% The shift reactor against tabulated equilibrium constants and against its own balances and equilibrium, computed
% here with a Peng-Robinson gas that shares no code with the host's; and its error messages.
%   octave-cli EquilibriumReactorTest.m WINE SOLVANEHOST CASE
here = fileparts (mfilename ('fullpath'));
addpath (here, fullfile (here, '..', 'examples'));

function [h, lnphi] = gas (T, P, y)
  % Of the real gas: carbon monoxide, water, carbon dioxide, hydrogen, methane.
  flows = zeros (13, 1);
  flows([11 8 7 12 1]) = y;
  [h, ~, lnphi] = pengRobinson ('vapor', T, P, flows);
  lnphi = lnphi([11 8 7 12 1])';
end

function lnK = constant (T)
  % By van 't Hoff's equation.
  c = compounds ();
  nu = [-1 -1 1 1];
  of = [11 8 7 12];
  heat = @(t) nu * (c.H(of) + (c.cp(of, :) ./ (1:4)) * (t .^ (1:4) - 298.15 .^ (1:4))');
  slope = @(t) arrayfun (@(t) heat (t) / (8.314462618 * t ^ 2), t);
  lnK = -nu * c.G(of) / (8.314462618 * 298.15) + quadgk (slope, 298.15, T, 'RelTol', 1e-12);
end

program = argv ()(1:2);
case_file = argv (){3};

% log10 of the constant from the Gibbs energies of formation in M. W. Chase, NIST-JANAF Thermochemical Tables,
% 4th edition (1998), in kJ/mol: T, CO, H2O, CO2. The host's data are older: 0.005 apart.
janaf = [500 -155.414 -219.051 -394.939
         600 -164.486 -214.007 -395.182
         700 -173.518 -208.812 -395.398
         800 -182.497 -203.496 -395.586
         1000 -200.275 -192.590 -395.886];
ideal = {'"real gas", "kind": "boolean", "mode": "input", "value": true', ...
         '"real gas", "kind": "boolean", "mode": "input", "value": false'};
given = @(T) {'"adiabatic", "kind": "boolean", "mode": "input", "value": true', ...
              '"adiabatic", "kind": "boolean", "mode": "input", "value": false'
              '"value": 620,', sprintf('"value": %d,', T)};
backwards = {'"carbon monoxide": 0.20', '"carbon monoxide": 0.00'; '"water": 0.40', '"water": 0.00'
             '"carbon dioxide": 0.08', '"carbon dioxide": 0.40'; '"hydrogen": 0.28', '"hydrogen": 0.56'
             '"temperature": 620', '"temperature": 1000'};
% Generation, changes, real gas, adiabatic.
runs = {'1.1', {}, true, true; '1.0', {}, true, true; '1.1', [backwards; ideal], false, true
        '1.0', given(700), true, false};
for i = 1:rows (janaf)
  runs(end+1, :) = {'1.1', [given(janaf(i, 1)); ideal], false, false};
end
atoms = [1 0 1 0 1; 0 2 0 2 4; 1 1 2 0 0]; % C, H, O
for i = 1:rows (runs)
  [generation, changes, isReal, isAdiabatic] = runs{i, :};
  result = runCase (program, case_file, generation, changes);
  [feed, product] = deal (result.streams(1), result.streams(2));
  p = result.parameters;
  T = product.temperature;
  flows = moleFlows (product);
  fed = moleFlows (feed);
  y = flows / sum (flows);
  expectNear ('elements', atoms * flows', atoms * fed', 1e-9);
  expectNear ('methane', flows(5), fed(5), 1e-10);
  expectNear ('conversion', p.conversion * fed(1), (fed(1) > 0) * (fed(1) - flows(1)), 1e-9);
  expectNear ('pressure', product.pressure, 2.45e6, 1e-3);
  expectNear ('outlet temperature', p.outletTemperature, T, 1e-6);
  [h, lnphi] = gas (T, 2.45e6, y);
  duty = sum (flows) * h - sum (fed) * gas (feed.temperature, 2.5e6, fed / sum (fed));
  expectNear ('duty', p.duty, duty, 0.1);
  if (isAdiabatic)
    expectNear ('heat of the adiabatic reactor', duty, 0, 0.1);
  end
  expectNear ('constant', log (p.equilibriumConstant), constant (T), 1e-7);
  expectNear ('equilibrium', [-1 -1 1 1] * (log (y) + isReal * lnphi)(1:4)', constant (T), 1e-7);
  row = find (janaf(:, 1) == T);
  if (! isAdiabatic && ! isempty (row))
    table = -(janaf(row, 4) - janaf(row, 2) - janaf(row, 3)) * 1000 / (8.314462618 * T * log (10));
    printf ('%g K: log10 K %.4f, table %.4f\n', T, log10 (p.equilibriumConstant), table);
    expectNear ('tabulated constant', log10 (p.equilibriumConstant), table, 0.006);
  end
end

refusals = {{'"value": "carbon monoxide + water', '"value": "carbon monoxide + steam'}, 'the reaction needs "steam", which is not among'
            {'"value": "carbon monoxide + water', '"value": "carbon monoxide + 2 water'}, 'A coefficient is wrong'
            given(350), 'a liquid forms at the outlet'};
for i = 1:rows (refusals)
  [result, text] = runCase (program, case_file, '1.1', refusals{i, 1});
  if (! isempty (result) || isempty (strfind (text, refusals{i, 2})))
    error ('no refusal "%s" but\n%s', refusals{i, 2}, text);
  end
end
disp ('balances close and the constants are those of the tables, on both generations')
