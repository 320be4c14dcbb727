% A flash drum at a given temperature, vapour fraction or duty.
%
% Product 1 is the vapour, product 2 the liquid. A product whose phase does
% not form has no flow and the composition of the feed. If the simulator finds
% two liquids, they leave together.
%
% Parameters
%   specification      which of the next three holds
%   drum temperature   used if it is the specification
%   drum vapor fraction  used if it is the specification, by moles
%   given duty         used if it is the specification: 0 for an adiabatic drum
%   pressure drop      from the feed to the drum
% Results
%   duty               heat that the drum takes up, below 0 if it is cooled
%   temperature        of the drum
%   vapor fraction     of the drum, by moles

flow = getFeedProp(1, 'totalFlow');     % mol/s
X = getFeedProp(1, 'fraction');
h1 = getFeedProp(1, 'enthalpy');        % J/mol
P = getFeedProp(1, 'pressure') - getParameter('pressure drop');  % Pa
if P <= 0
    error('Flash drum: the pressure drop is too large: the drum would be at %g Pa.', P);
end

switch getParameter('specification')
    case 'drum temperature'
        conditions = {'pressure', P, 'temperature', getParameter('drum temperature')};
    case 'drum vapor fraction'
        conditions = {'pressure', P, 'vaporFraction', getParameter('drum vapor fraction')};
    case 'given duty'
        h2 = h1;
        if flow > 0
            h2 = h1 + getParameter('given duty') / flow;
        end
        conditions = {'pressure', P, 'enthalpy', h2};
end
[phases, fractions, compositions, T] = flashEquilibrium(X, conditions{:});
h2 = flashProperty(X, conditions{:}, 'enthalpy');
isVapor = strcmpi(phases, 'vapor');

% A phase beside another one is saturated. Its enthalpy fixes its state also for a single compound, and on hosts that
% list their liquid first, where a product takes no vapour fraction.
sides = {isVapor, ~isVapor};
for product = 1:2
    part = fractions(sides{product});
    Y = X;                              % of a product without flow
    if sum(part) > 0
        Y = compositions(:, sides{product}) * part(:) / sum(part);
    end
    state = {'temperature', T};
    if any(isVapor) && ~all(isVapor)
        state = {'enthalpy', flashProperty(Y, 'pressure', P, 'vaporFraction', 2 - product, 'enthalpy')};
    end
    setProduct(product, flow * sum(part), Y, 'pressure', P, state{:});
end
setParameter('duty', flow * (h2 - h1));
setParameter('temperature', T);
setParameter('vapor fraction', sum(fractions(isVapor)));
