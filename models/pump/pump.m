% A pump: a liquid is brought to a higher pressure.
%
% Parameters
%   outlet pressure     at least the feed's
%   efficiency          work on an incompressible liquid over that of the pump
% Results
%   outlet temperature  of the product
%   power               that the liquid takes up
%   head                of the feed: work on the incompressible liquid over its weight

P1 = getFeedProp(1, 'pressure');        % Pa
P2 = getParameter('outlet pressure');   % Pa
efficiency = getParameter('efficiency');
flow = getFeedProp(1, 'totalFlow');     % mol/s
X = getFeedProp(1, 'fraction');
h1 = getFeedProp(1, 'enthalpy');        % J/mol
v = getFeedProp(1, 'volume');           % m3/mol
[phases, fractions] = getFeedEquilibrium(1);
if P2 < P1
    error('Pump: the outlet pressure, %g Pa, must be at least that of the feed, %g Pa.', P2, P1);
elseif sum(fractions(strcmpi(phases, 'vapor'))) > 1e-6
    error('Pump: the feed contains a vapour. Cool it, or use a compressor.');
end

work = v * (P2 - P1);                   % J/mol, of an ideal pump
h2 = h1 + work / efficiency;
[phases, fractions, compositions, T2] = flashEquilibrium(X, 'pressure', P2, 'enthalpy', h2);
setProduct(1, flow, X, 'pressure', P2, 'enthalpy', h2);
setParameter('outlet temperature', T2);
setParameter('power', flow * (h2 - h1));
kilograms = X' * getCompoundConstant('molecularWeight') / 1000;  % of a mole
setParameter('head', work / (9.80665 * kilograms));
