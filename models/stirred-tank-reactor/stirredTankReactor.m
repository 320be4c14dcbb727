% A continuous stirred-tank reactor (CSTR) for one gas reaction, at a given temperature.
%
% The gas in the reactor has the composition of the product. The file
% kinetics.csv has the reaction and its rate: see READKINETICS.
%
% Parameters
%   volume         of the gas in the reactor
%   temperature    of the reactor
%   pressure drop  from the feed to the reactor
% Results
%   conversion     of the first compound of the reaction
%   rate           of the reaction in the reactor
%   duty           heat that the reactor takes up, below 0 if it is cooled

feed = getFeedProp(1, 'flow');          % mol/s
V = getParameter('volume');             % m3
T = getParameter('temperature');        % K
P = getFeedProp(1, 'pressure') - getParameter('pressure drop');  % Pa
kinetics = readKinetics('kinetics.csv', compNames);
if P <= 0
    error('Reactor: the pressure drop is too large: the reactor would be at %g Pa.', P);
elseif size(kinetics.nu, 2) ~= 1
    error('Reactor: kinetics.csv must have one reaction, but has %d.', size(kinetics.nu, 2));
end

% The rate falls with the extent, from that of the feed to 0 where a reactant runs out.
used = kinetics.nu < 0;
most = min(feed(used) ./ -kinetics.nu(used));  % mol/s
flowAt = @(extent) max(feed + kinetics.nu * extent, 0);
extent = 0;
if most > 0
    extent = fzero(@(x) V * reactionRates(kinetics, T, P, flowAt(x)) - x, [0 most], optimset('TolX', 1e-14 * most));
end
product = flowAt(extent);
X = getFeedProp(1, 'fraction');
rate = 0;
if sum(product) > 0
    X = product / sum(product);
    rate = reactionRates(kinetics, T, P, product);
end
conversion = 0;
if feed(kinetics.key(1)) > 0
    conversion = 1 - product(kinetics.key(1)) / feed(kinetics.key(1));
end
% With heats of formation, since compounds change.
h = flashProperty(X, 'temperature', T, 'pressure', P, 'enthalpyF');

setProduct(1, sum(product), X, 'temperature', T, 'pressure', P);
setParameter('conversion', conversion);
setParameter('rate', rate);
setParameter('duty', sum(product) * h - sum(feed) * getFeedProp(1, 'enthalpyF'));
