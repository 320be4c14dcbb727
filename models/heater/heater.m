% A heater or cooler to a given temperature, vapour fraction or duty.
%
% Parameters
%   specification        which of the next three holds
%   outlet temperature   used if it is the specification
%   outlet vapor fraction  used if it is the specification, by moles
%   given duty           used if it is the specification: above 0 heats, below 0 cools
%   pressure drop        from the feed to the product
% Results
%   duty                 heat that the stream takes up, below 0 if it is cooled
%   temperature          of the product
%   vapor fraction       of the product, by moles

flow = getFeedProp(1, 'totalFlow');     % mol/s
X = getFeedProp(1, 'fraction');
h1 = getFeedProp(1, 'enthalpy');        % J/mol
P = getFeedProp(1, 'pressure') - getParameter('pressure drop');  % Pa
if P <= 0
    error('Heater: the pressure drop is too large: the product would be at %g Pa.', P);
end

switch getParameter('specification')
    case 'outlet temperature'
        conditions = {'pressure', P, 'temperature', getParameter('outlet temperature')};
    case 'outlet vapor fraction'
        conditions = {'pressure', P, 'vaporFraction', getParameter('outlet vapor fraction')};
    case 'given duty'
        h2 = h1;
        if flow > 0
            h2 = h1 + getParameter('given duty') / flow;
        end
        conditions = {'pressure', P, 'enthalpy', h2};
end
[phases, fractions, compositions, T] = flashEquilibrium(X, conditions{:});
h2 = flashProperty(X, conditions{:}, 'enthalpy');

setProduct(1, flow, X, 'pressure', P, 'enthalpy', h2);
setParameter('duty', flow * (h2 - h1));
setParameter('temperature', T);
setParameter('vapor fraction', sum(fractions(strcmpi(phases, 'vapor'))));
