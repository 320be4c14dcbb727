% An expander with an isentropic efficiency.
%
% Parameters
%   outlet pressure         at most the feed's
%   efficiency              isentropic: work of the real expander over that of the ideal one
%   mechanical efficiency   work at the shaft over that of the gas
% Results
%   outlet temperature      of the product
%   isentropic temperature  of the product of the ideal expander
%   liquid fraction         of the product, by moles: a turbine bears little
%   gas power               that the gas gives off
%   shaft power             at the shaft

P1 = getFeedProp(1, 'pressure');        % Pa
P2 = getParameter('outlet pressure');   % Pa
flow = getFeedProp(1, 'totalFlow');     % mol/s
X = getFeedProp(1, 'fraction');
h1 = getFeedProp(1, 'enthalpy');        % J/mol
s1 = getFeedProp(1, 'entropy');         % J/mol/K
if P2 > P1
    error('Expander: the outlet pressure, %g Pa, must not exceed that of the feed, %g Pa.', P2, P1);
end

ideal = flashProperty(X, 'pressure', P2, 'entropy', s1, 'enthalpy');
h2 = h1 + (ideal - h1) * getParameter('efficiency');
[phases, fractions, compositions, idealT] = flashEquilibrium(X, 'pressure', P2, 'entropy', s1);
[phases, fractions, compositions, T2] = flashEquilibrium(X, 'pressure', P2, 'enthalpy', h2);
power = flow * (h1 - h2);               % W

setProduct(1, flow, X, 'pressure', P2, 'enthalpy', h2);
setParameter('outlet temperature', T2);
setParameter('isentropic temperature', idealT);
setParameter('liquid fraction', sum(fractions(~strcmpi(phases, 'vapor'))));
setParameter('gas power', power);
setParameter('shaft power', power * getParameter('mechanical efficiency'));
