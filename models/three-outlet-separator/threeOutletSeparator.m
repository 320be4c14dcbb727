% A separator of vapour, light liquid and water or another heavy liquid.
%
% If the simulator finds two liquids, the denser one is the heavy liquid.
% Otherwise the compound 'water' separates as a pure liquid where its fugacity in
% vapour and light liquid would exceed that of pure water.
%
% Product 1 is the vapour, 2 the light liquid, 3 the heavy liquid. A product
% whose phase does not form has no flow and the composition of the feed.
%
% Parameters
%   temperature    of the separator
%   pressure drop  from the feed to the separator
%   water          name of the compound that separates, if the simulator finds one liquid
% Results
%   duty           heat that the separator takes up, below 0 if it is cooled
%   vapor flow     of product 1
%   light flow     of product 2
%   heavy flow     of product 3

T = getParameter('temperature');        % K
P = getFeedProp(1, 'pressure') - getParameter('pressure drop');  % Pa
feed = getFeedProp(1, 'flow');          % mol/s
if P <= 0
    error('Separator: the pressure drop is too large: the separator would be at %g Pa.', P);
end

[phases, fractions, compositions] = flashEquilibrium(getFeedProp(1, 'fraction'), 'temperature', T, 'pressure', P);
liquids = find(~strcmpi(phases, 'vapor') & fractions > 0);
if length(liquids) > 1
    flows = sortedPhases(phases, sum(feed) * fractions, compositions, T, P);
else
    isWater = strcmpi(compNames, getParameter('water'))';
    flows = freeWater(feed, isWater(:), T, P);
end

heat = -sum(feed) * getFeedProp(1, 'enthalpy');  % W
for product = 1:3
    total = sum(flows(:, product));
    X = getFeedProp(1, 'fraction');
    if total > 0
        X = flows(:, product) / total;
        heat = heat + total * flashProperty(X, 'temperature', T, 'pressure', P, 'enthalpy');
    end
    setProduct(product, total, X, 'temperature', T, 'pressure', P);
end
setParameter('duty', heat);
setParameter('vapor flow', sum(flows(:, 1)));
setParameter('light flow', sum(flows(:, 2)));
setParameter('heavy flow', sum(flows(:, 3)));

function flows = sortedPhases(phases, amounts, compositions, T, P)
% Flow of each compound in vapour, light and heavy liquid, as the simulator found them.
mass = getCompoundConstant('molecularWeight');
flows = zeros(size(compositions, 1), 3);
density = -Inf(1, length(phases));
for i = 1:length(phases)
    if strcmpi(phases{i}, 'vapor')
        flows(:, 1) = amounts(i) * compositions(:, i);
    else
        density(i) = (compositions(:, i)' * mass) / ...
                     getSinglePhaseProperty('volume', phases{i}, T, P, compositions(:, i));
    end
end
[sorted, order] = sort(density, 'descend');
flows(:, 3) = amounts(order(1)) * compositions(:, order(1));
flows(:, 2) = amounts(order(2)) * compositions(:, order(2));

function flows = freeWater(feed, isWater, T, P)
% Flow of each compound in vapour, light liquid and water. What is not free
% water is in equilibrium at T and P, with water of at most the fugacity of the
% pure liquid.
flows = [split(feed, T, P), zeros(size(feed))];
water = sum(feed(isWater));
if water == 0
    return
end
[phases, fractions] = flashEquilibrium(double(isWater), 'temperature', T, 'pressure', P);
if strcmpi(phases{1}, 'vapor')
    return                              % too hot for free water
end
coefficient = getSinglePhaseProperty('fugacityCoefficient', phases{1}, T, P, double(isWater));
pure = coefficient(isWater);
dry = feed .* ~isWater;
dissolved = 0;
if sum(dry) > 0
    excess = @(n) waterExcess(dry + n * isWater, isWater, pure, T, P);
    dissolved = water;
    if excess(water) > 0
        % Below the root, since beyond it the simulator may find a liquid of water.
        dissolved = (1 - 1e-9) * fzero(excess, [0 water], optimset('TolX', 1e-12 * water));
    end
end
flows(:, 1:2) = split(dry + dissolved * isWater, T, P);
flows(isWater, 3) = water - dissolved;

function excess = waterExcess(flow, isWater, pure, T, P)
% Fugacity of water over that of the pure liquid, less 1; 1 if the liquid is mostly water.
[phases, fractions, compositions] = flashEquilibrium(flow / sum(flow), 'temperature', T, 'pressure', P);
liquid = ~strcmpi(phases, 'vapor');
if any(compositions(isWater, liquid) > 0.5)
    excess = 1;
    return
end
coefficient = getSinglePhaseProperty('fugacityCoefficient', phases{1}, T, P, compositions(:, 1));
excess = compositions(isWater, 1) * coefficient(isWater) / pure - 1;

function flows = split(flow, T, P)
% Flow of each compound in the vapour and in the liquid.
flows = zeros(length(flow), 2);
if sum(flow) > 0
    [phases, fractions, compositions] = flashEquilibrium(flow / sum(flow), 'temperature', T, 'pressure', P);
    for i = 1:length(phases)
        column = 2 - strcmpi(phases{i}, 'vapor');
        flows(:, column) = flows(:, column) + sum(flow) * fractions(i) * compositions(:, i);
    end
end
