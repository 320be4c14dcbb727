% A valve: the pressure falls at constant enthalpy.
%
% Parameters
%   outlet pressure     at most the feed's
% Results
%   outlet temperature  of the product
%   vapor fraction      of the product, by moles

P1 = getFeedProp(1, 'pressure');        % Pa
P2 = getParameter('outlet pressure');   % Pa
flow = getFeedProp(1, 'totalFlow');     % mol/s
X = getFeedProp(1, 'fraction');
h = getFeedProp(1, 'enthalpy');         % J/mol
if P2 > P1
    error('Valve: the outlet pressure, %g Pa, must not exceed that of the feed, %g Pa.', P2, P1);
end

[phases, fractions, compositions, T2] = flashEquilibrium(X, 'pressure', P2, 'enthalpy', h);
setProduct(1, flow, X, 'pressure', P2, 'enthalpy', h);
setParameter('outlet temperature', T2);
setParameter('vapor fraction', sum(fractions(strcmpi(phases, 'vapor'))));
