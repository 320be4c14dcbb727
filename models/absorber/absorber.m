% An absorber or stripper with equilibrium stages in counter-current.
%
% Feed 1 is the liquid that enters at the top, feed 2 the gas that enters at
% the bottom. Product 1 is the gas from the top, product 2 the liquid from the
% bottom. The stages are adiabatic and at the pressure of the gas feed, less
% the pressure drop; the liquid comes to that pressure.
%
% Each stage is a flash of what enters it. Sweeps down and up the column repeat
% the flashes until the streams between the stages no longer change.
%
% Parameters
%   stages              number of equilibrium stages
%   pressure drop       from the gas feed to all stages
%   key compound        whose absorption is reported
% Results
%   absorbed share      of the key compound in the gas: share of it that leaves with the liquid, less what the
%                       liquid brought
%   top temperature     of the gas product
%   bottom temperature  of the liquid product

N = getParameter('stages');
P = getFeedProp(2, 'pressure') - getParameter('pressure drop');  % Pa
keyName = getParameter('key compound');
key = find(strcmpi(compNames, keyName));
if isempty(key)
    error('Absorber: the key compound "%s" is not among the compounds of the flowsheet.', keyName);
elseif P <= 0
    error('Absorber: the pressure drop is too large: the stages would be at %g Pa.', P);
end

% A stream is a column: flows of the compounds, mol/s, then enthalpy, W.
solvent = [getFeedProp(1, 'flow'); getFeedProp(1, 'totalFlow') * getFeedProp(1, 'enthalpy')];
gas = [getFeedProp(2, 'flow'); getFeedProp(2, 'totalFlow') * getFeedProp(2, 'enthalpy')];
scale = sum(solvent(1:nComp)) + sum(gas(1:nComp));
V = [zeros(nComp + 1, N), gas];         % V(:, j) leaves stage j upwards
L = [solvent, zeros(nComp + 1, N)];     % L(:, j + 1) leaves stage j downwards
T = zeros(1, N);
change = Inf;
sweep = 0;
while change > 1e-11 * scale
    former = L;
    for j = [1:N, N-1:-1:1]
        [V(:, j), L(:, j + 1), T(j)] = stage(V(:, j + 1) + L(:, j), P);
    end
    change = max(max(abs(L(1:nComp, :) - former(1:nComp, :))));
    sweep = sweep + 1;
    if sweep == 1000
        error('Absorber: the stages did not settle in %d sweeps: the streams still change by %g mol/s.', sweep, change);
    end
end

ends = {V(:, 1), L(:, N + 1)};
for product = 1:2
    flow = ends{product}(1:nComp);
    if sum(flow) > 0
        setProduct(product, sum(flow), flow / sum(flow), 'pressure', P, 'enthalpy', ends{product}(end) / sum(flow));
    else
        setProduct(product, 0, getFeedProp(3 - product, 'fraction'), 'pressure', P, ...
                   'temperature', getFeedProp(3 - product, 'temperature'));
    end
end
absorbed = 0;
if gas(key) > 0
    absorbed = (gas(key) - V(key, 1)) / gas(key);
end
setParameter('absorbed share', absorbed);
setParameter('top temperature', T(1));
setParameter('bottom temperature', T(N));

report = sprintf('%5s %10s %14s %14s %18s\n', 'stage', 'T/K', 'gas/(mol/s)', 'liquid/(mol/s)', ['y ' compNames{key}]);
for j = 1:N
    total = sum(V(1:nComp, j));
    report = [report sprintf('%5d %10.3f %14.6g %14.6g %18.6g\n', j, T(j), total, sum(L(1:nComp, j + 1)), ...
                             V(key, j) / max(total, realmin))];
end
setReport('Stages', report);

function [V, L, T] = stage(inlet, P)
% Vapour and liquid of an adiabatic flash.
V = zeros(size(inlet));
L = V;
flow = inlet(1:end-1);
total = sum(flow);
T = 0;
if total == 0
    return
end
[phases, fractions, compositions, T] = flashEquilibrium(flow / total, 'pressure', P, 'enthalpy', inlet(end) / total);
isVapor = strcmpi(phases, 'vapor');
if any(isVapor)
    y = compositions(:, isVapor);
    V = total * fractions(isVapor) * [y; inlet(end) / total];
    if ~all(isVapor)
        V(end) = total * fractions(isVapor) * getSinglePhaseProperty('enthalpy', phases{isVapor}, T, P, y);
    end
end
L = inlet - V;
