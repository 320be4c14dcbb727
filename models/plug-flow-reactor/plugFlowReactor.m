% A plug-flow reactor for gas reactions, adiabatic or at a given temperature.
%
% The file kinetics.csv has the reactions and their rates: see READKINETICS.
% The pressure is that of the product in the whole reactor.
%
% Parameters
%   volume              of the gas in the reactor
%   adiabatic           true: no heat is exchanged; false: the gas has the parameter 'temperature'
%   temperature         of the reactor, if it is not adiabatic
%   pressure drop       from the feed to the reactor
% Results
%   conversion          of the first compound of the first reaction
%   outlet temperature  of the product
%   duty                heat that the reactor takes up, below 0 if it is cooled

feed = getFeedProp(1, 'flow');          % mol/s
total = sum(feed);
feedHeat = total * getFeedProp(1, 'enthalpyF');  % W, with heats of formation
P = getFeedProp(1, 'pressure') - getParameter('pressure drop');  % Pa
kinetics = readKinetics('kinetics.csv', compNames);
if P <= 0
    error('Reactor: the pressure drop is too large: the reactor would be at %g Pa.', P);
end
temperatureAt = @(flow) getParameter('temperature');
if getParameter('adiabatic')
    temperatureAt = @(flow) adiabaticTemperature(flow, P, feedHeat);
end

% The extents of the reactions along the reactor, relative to the feed.
count = size(kinetics.nu, 2);
place = linspace(0, getParameter('volume'), 11)';
extents = zeros(length(place), count);
if total > 0 && place(end) > 0
    flowAt = @(x) max(feed + total * kinetics.nu * x, 0);
    rates = @(v, x) reactionRates(kinetics, temperatureAt(flowAt(x)), P, flowAt(x)) / total;
    [reached, extents] = ode45(rates, place, zeros(count, 1), odeset('RelTol', 1e-9, 'AbsTol', 1e-11));
    if length(reached) < length(place)
        error('Reactor: the integration stopped at %g m3.', reached(end));
    end
end

report = sprintf('%12s %12s', 'volume/m3', 'T/K');
report = [report sprintf(' %16s', compNames{:}) sprintf('   mol/s\n')];
for i = 1:length(place)
    product = max(feed + total * kinetics.nu * extents(i, :)', 0);
    if total > 0
        T = temperatureAt(product);
    else
        T = getFeedProp(1, 'temperature');
    end
    report = [report sprintf('%12.5g %12.3f', place(i), T) sprintf(' %16.6g', product) sprintf('\n')];
end
setReport('Profile', report);

X = getFeedProp(1, 'fraction');
if total > 0
    X = product / sum(product);
end
conversion = 0;
if feed(kinetics.key(1)) > 0
    conversion = 1 - product(kinetics.key(1)) / feed(kinetics.key(1));
end
setProduct(1, sum(product), X, 'temperature', T, 'pressure', P);
setParameter('conversion', conversion);
setParameter('outlet temperature', T);
setParameter('duty', sum(product) * flashProperty(X, 'temperature', T, 'pressure', P, 'enthalpyF') - feedHeat);

function T = adiabaticTemperature(flow, P, heat)
total = sum(flow);
[phases, fractions, compositions, T] = flashEquilibrium(flow / total, 'pressure', P, 'enthalpyF', heat / total);
