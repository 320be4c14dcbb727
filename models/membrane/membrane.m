% A membrane module in cross-flow for gases.
%
% Gas permeates through a dense membrane from the high to the low pressure. The
% feed flows along the membrane, well mixed across it and without pressure
% drop. The permeate leaves at right angles and does not mix with permeate from
% upstream, as in a spiral-wound module or in hollow fibres with a porous
% support. Both sides stay at the temperature of the feed.
%
% Product 1 is the permeate, product 2 the retentate. A compound without a
% permeance does not permeate; 1 GPU is 3.35e-10 mol/(m2 s Pa).
%
% Parameters
%   area                           of the membrane
%   permeate pressure              below that of the feed
%   key compound                   of the results recovery and permeate purity
%   permeance of carbon dioxide    and so on: one for each compound that permeates
%   permeance of methane           likewise
%   permeance of hydrogen          likewise
%   permeance of carbon monoxide   likewise
%   permeance of nitrogen          likewise
%   permeance of water             likewise
% Results
%   stage cut                      flow of the permeate over that of the feed
%   recovery                       share of the key compound that permeates
%   permeate purity                mole fraction of the key compound in the permeate

area = getParameter('area');               % m2
lowP = getParameter('permeate pressure');  % Pa
keyName = getParameter('key compound');
key = find(strcmpi(compNames, keyName));
if isempty(key)
    error('Membrane: the key compound "%s" is not among the compounds of the flowsheet.', keyName);
end

permeance = zeros(nComp, 1);               % mol/(m2 s Pa)
isGiven = false(nComp, 1);
for i = 1:nComp
    try
        permeance(i) = getParameter(['permeance of ' compNames{i}]);
        isGiven(i) = true;
    catch failure
        if isempty(strfind(failure.message, 'Invalid parameter name'))
            rethrow(failure);
        end
    end
end

T = getFeedProp(1, 'temperature');         % K
highP = getFeedProp(1, 'pressure');        % Pa
feed = getFeedProp(1, 'flow');             % mol/s, in the order of compNames
feedFlow = sum(feed);
[phases, fractions] = getFeedEquilibrium(1);

if feedFlow == 0
    X = getFeedProp(1, 'fraction');
    setProduct(1, 0, X, 'temperature', T, 'pressure', lowP);
    setProduct(2, 0, X, 'temperature', T, 'pressure', highP);
    setParameter('stage cut', 0);
    setParameter('recovery', 0);
    setParameter('permeate purity', 0);
    return
elseif sum(fractions(~strcmpi(phases, 'vapor'))) > 1e-6
    error('Membrane: the feed must be a gas, but contains a liquid.');
elseif ~(area > 0)
    error('Membrane: the area must be above 0, but is %g m2.', area);
elseif ~(lowP > 0 && lowP < highP)
    error('Membrane: the permeate pressure must lie between 0 and that of the feed, %g Pa, but is %g Pa.', ...
          highP, lowP);
elseif ~all(permeance >= 0)
    error('Membrane: a permeance must not be below 0.');
end
[y, J] = localPermeation(feed / feedFlow, permeance, highP, lowP);
if J == 0
    error(['Membrane: nothing permeates. In the feed, the compounds with a permeance have %g Pa together, which ' ...
           'does not exceed the permeate pressure of %g Pa.'], ...
          highP * sum(feed(permeance > 0)) / feedFlow, lowP);
end

% Along the membrane, the flow of each compound is that in the feed times
% exp(-u), which stays above 0. A retentate below leastFlow counts as 0.
leastFlow = 1e-4 * feedFlow;               % mol/s
options = odeset('RelTol', 1e-10, 'AbsTol', 1e-10);
[place, u] = ode45(@(a, u) depletionRate(u, feed, leastFlow, permeance, highP, lowP), ...
                   linspace(0, area, 11), zeros(nComp, 1), options);
flows = exp(-u) .* (ones(length(place), 1) * feed');  % mol/s, place by compound
gathered = -expm1(-u) .* (ones(length(place), 1) * feed');
retentate = flows(end, :)';
permeate = gathered(end, :)';
if place(end) < area
    error('Membrane: the integration along the module stopped at %g m2.', place(end));
elseif sum(retentate) <= leastFlow
    error('Membrane: the whole feed permeates through less than %g m2. Lower the area.', area);
end
stageCut = sum(permeate) / feedFlow;
recovery = -expm1(-u(end, :)');            % of each compound

setProduct(1, sum(permeate), permeate / sum(permeate), 'temperature', T, 'pressure', lowP);
setProduct(2, sum(retentate), retentate / sum(retentate), 'temperature', T, 'pressure', highP);
setParameter('stage cut', stageCut);
setParameter('recovery', recovery(key));
setParameter('permeate purity', permeate(key) / sum(permeate));

report = sprintf('Membrane module of %g m2, %.3f bar to %.3f bar, stage cut %.4f\n', ...
                 area, highP / 1e5, lowP / 1e5, stageCut);
for i = 1:nComp
    if isGiven(i)
        report = [report sprintf('  %-16s permeance %.3e mol/(m2 s Pa), recovery %.4f\n', ...
                                 compNames{i}, permeance(i), recovery(i))];
    else
        report = [report sprintf('  %-16s does not permeate: there is no parameter "permeance of %s"\n', ...
                                 compNames{i}, compNames{i})];
    end
end

% At the entry nothing is collected yet: use what permeates there.
gathered(1, :) = localPermeation(feed / feedFlow, permeance, highP, lowP)';
x = flows ./ (sum(flows, 2) * ones(1, nComp));
collected = gathered ./ (sum(gathered, 2) * ones(1, nComp));
y = zeros(size(x));
for i = 1:length(place)
    y(i, :) = localPermeation(x(i, :)', permeance, highP, lowP)';
end
tables = {'Mole fractions in the retentate along the module', x; ...
          'Mole fractions of the local permeate', y; ...
          'Mole fractions of the permeate collected from the entry', collected};
for k = 1:size(tables, 1)
    report = [report sprintf('%s\n  %10s %18s', tables{k, 1}, 'area/m2', 'retentate/(mol/s)') ...
              sprintf(' %18s', compNames{:}) sprintf('\n')];
    for i = 1:length(place)
        report = [report sprintf('  %10.4g %18.6g', place(i), sum(flows(i, :))) ...
                  sprintf(' %18.6f', tables{k, 2}(i, :)) sprintf('\n')];
    end
end
setReport('Module', report);
