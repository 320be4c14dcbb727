% A compressor with an isentropic efficiency.
%
% Parameters
%   outlet pressure         at least the feed's
%   efficiency              isentropic: work of the ideal compressor over that of the real one
%   mechanical efficiency   work that the gas takes up over that of the shaft
% Results
%   outlet temperature      of the product
%   isentropic temperature  of the product of the ideal compressor
%   gas power               that the gas takes up
%   shaft power             that the drive supplies

P1 = getFeedProp(1, 'pressure');        % Pa
P2 = getParameter('outlet pressure');   % Pa
flow = getFeedProp(1, 'totalFlow');     % mol/s
X = getFeedProp(1, 'fraction');
h1 = getFeedProp(1, 'enthalpy');        % J/mol
s1 = getFeedProp(1, 'entropy');         % J/mol/K
[phases, fractions] = getFeedEquilibrium(1);
if P2 < P1
    error('Compressor: the outlet pressure, %g Pa, must be at least that of the feed, %g Pa.', P2, P1);
elseif sum(fractions(~strcmpi(phases, 'vapor'))) > 1e-6
    error('Compressor: the feed contains a liquid. Separate it first.');
end

ideal = flashProperty(X, 'pressure', P2, 'entropy', s1, 'enthalpy');
h2 = h1 + (ideal - h1) / getParameter('efficiency');
[phases, fractions, compositions, idealT] = flashEquilibrium(X, 'pressure', P2, 'entropy', s1);
[phases, fractions, compositions, T2] = flashEquilibrium(X, 'pressure', P2, 'enthalpy', h2);
power = flow * (h2 - h1);               % W

setProduct(1, flow, X, 'pressure', P2, 'enthalpy', h2);
setParameter('outlet temperature', T2);
setParameter('isentropic temperature', idealT);
setParameter('gas power', power);
setParameter('shaft power', power / getParameter('mechanical efficiency'));
