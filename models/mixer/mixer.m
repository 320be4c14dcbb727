% An adiabatic mixer of any number of feeds.
%
% Add feed ports as you need them. The product has the lowest pressure of the feeds, less the pressure drop. A
% feed without flow does not count.
%
% Parameters
%   pressure drop       from the feed with the lowest pressure to the product
% Results
%   outlet temperature  of the product

flows = zeros(nComp, 1);                % mol/s
energy = 0;                             % W
P = Inf;                                % Pa
for feed = 1:getFeedCount
    total = getFeedProp(feed, 'totalFlow');
    if total > 0
        flows = flows + getFeedProp(feed, 'flow');
        energy = energy + total * getFeedProp(feed, 'enthalpy');
        P = min(P, getFeedProp(feed, 'pressure'));
    end
end
total = sum(flows);
if total > 0
    X = flows / total;
    h = energy / total;                 % J/mol
else
    X = getFeedProp(1, 'fraction');
    h = getFeedProp(1, 'enthalpy');
    P = getFeedProp(1, 'pressure');
end
P = P - getParameter('pressure drop');
if P <= 0
    error('Mixer: the pressure drop is too large: the product would be at %g Pa.', P);
end

[phases, fractions, compositions, T] = flashEquilibrium(X, 'pressure', P, 'enthalpy', h);
setProduct(1, total, X, 'pressure', P, 'enthalpy', h);
setParameter('outlet temperature', T);
