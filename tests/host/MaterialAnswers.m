% The script of a unit, run by HostProgramTest.m: queries of the host's materials that the examples do not make.
z = [0.4 0.3 0.3];

% Some compounds lack some data.
rho = getCompoundConstant ('liquidDensityAt25C');
assert (rho(1), 8612, 1);
assert (isnan (rho), logical ([0; 1; 1]));
assert (getCompoundConstant ('smilesFormula'){2}, 'O=C=O');
P = getTDependentProperty ('vaporPressure', 310);
assert (isnan (P), logical ([0; 1; 1]));
T = getPDependentProperty ('boilingPointTemperature.Dpressure', P(1));
slope = getTDependentProperty ('vaporPressure.Dtemperature', 310);
assert (T(1) * slope(1), 1, 1e-6);

% The shapes of derivatives.
one = @(name) size (getSinglePhaseProperty (name, 'Liquid', 300, 2e6, z));
assert ({one('heatCapacity'), one('volume.DMOLES'), one('fugacity.Dmoles')}, {[1 1], [3 1], [3 3]});
two = @(name) size (getTwoPhaseProperty (name, 'Vapor', 'Liquid', 300, 2e6, z, z));
assert ({two('surfaceTension'), two('surfaceTension.Dmoles')}, {[1 1], [3 2]});
assert ({two('logKvalue.Dpressure'), two('logKvalue.DmolFraction')}, {[3 1], [3 6]});

% A state found at T and P is found again by its other properties.
state = {'temperature', 260, 'pressure', 2e6};
[phases, fractions] = flashEquilibrium (z, state{:});
known = struct (state{:}, 'vaporFraction', fractions(strcmp (phases, 'Vapor')));
for name = {'enthalpy', 'entropy', 'volume'}
  known.(name{1}) = flashProperty (z, state{:}, name{1});
end
pairs = {'pressure', 'pressure', 'entropy', 'pressure', 'vaporFraction', 'temperature', 'volume', 'vaporFraction'
         'temperature', 'enthalpy', 'pressure', 'vaporFraction', 'temperature', 'volume', 'pressure', 'volume'};
for pair = pairs
  [~, ~, ~, T, P] = flashEquilibrium (z, pair{1}, known.(pair{1}), pair{2}, known.(pair{2}));
  assert ([T P], [260 2e6], -1e-6);
end
