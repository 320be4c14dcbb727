% Shortcut distillation by Fenske, Underwood and Gilliland.
%
% A column with a total condenser. The recoveries of two keys are given; there
% must be no compound between them. Relative volatilities are the geometric
% means of those where half of the distillate and half of the bottoms is vapour.
%
% Product 1 is the distillate, product 2 the bottoms, both boiling liquids.
%
% Parameters
%   light key             name of the compound that goes to the distillate
%   heavy key             name of the compound that goes to the bottoms
%   light key recovery    share of the light key that goes to the distillate
%   heavy key recovery    share of the heavy key that goes to the bottoms
%   reflux factor         reflux ratio over the minimum reflux ratio
%   condenser pressure    at the top
%   reboiler pressure     at the bottom
% Results
%   relative volatility   of the light to the heavy key
%   minimum stages        at total reflux, by Fenske, with the reboiler
%   minimum reflux ratio  by Underwood
%   reflux ratio          reflux over distillate
%   stages                by Gilliland, with the reboiler
%   feed stage            from the top, by Kirkbride
%   condenser duty        heat that the condenser removes
%   reboiler duty         heat that the reboiler supplies

feed = getFeedProp(1, 'flow');          % mol/s
total = sum(feed);
condenserP = getParameter('condenser pressure');
reboilerP = getParameter('reboiler pressure');
light = findKey(compNames, getParameter('light key'));
heavy = findKey(compNames, getParameter('heavy key'));
X = getFeedProp(1, 'fraction');
results = {'relative volatility', 'minimum stages', 'minimum reflux ratio', 'reflux ratio', 'stages', ...
           'feed stage', 'condenser duty', 'reboiler duty'};
if total == 0
    setProduct(1, 0, X, 'pressure', condenserP, 'enthalpy', boilingEnthalpy(X, condenserP));
    setProduct(2, 0, X, 'pressure', reboilerP, 'enthalpy', boilingEnthalpy(X, reboilerP));
    for i = 1:length(results)
        setParameter(results{i}, 0);
    end
    return
elseif feed(light) <= 0 || feed(heavy) <= 0
    error('Distillation: the feed must contain both keys, %s and %s.', compNames{light}, compNames{heavy});
end

% Fenske: the split of the keys is given, that of the others follows from
% their volatilities, which depend on the split again.
present = feed > 0;
keySplit = [getParameter('light key recovery'), 1 - getParameter('heavy key recovery')];
keyRatio = keySplit ./ (1 - keySplit);  % distillate over bottoms
alpha = volatility(X, getFeedProp(1, 'pressure'), heavy);
for iteration = 1:100
    if alpha(light) <= 1
        error('Distillation: %s is not more volatile than %s. Exchange the keys.', compNames{light}, compNames{heavy});
    end
    leastStages = log(keyRatio(1) / keyRatio(2)) / log(alpha(light));
    ratio = keyRatio(2) * alpha .^ leastStages;
    top = feed .* ratio ./ (1 + ratio);
    top(light) = keySplit(1) * feed(light);
    bottom = feed ./ (1 + ratio);
    bottom(light) = feed(light) - top(light);
    former = alpha;
    alpha = sqrt(volatility(top / sum(top), condenserP, heavy) .* volatility(bottom / sum(bottom), reboilerP, heavy));
    if all(abs(alpha - former) <= 1e-12 * former)
        break
    end
end
between = present & alpha > 1 & alpha < alpha(light);
between([light heavy]) = false;
if iteration == 100
    error('Distillation: the relative volatilities were not found.');
elseif any(between)
    error('Distillation: %s boils between the keys. Choose neighbours as keys.', compNames{find(between, 1)});
end

% Underwood: his equation, multiplied by the factors that vanish at the keys.
D = sum(top);
B = sum(bottom);
P = getFeedProp(1, 'pressure');
boiling = boilingEnthalpy(X, P);
steam = flashProperty(X, 'pressure', P, 'vaporFraction', 1, 'enthalpy');
q = (steam - getFeedProp(1, 'enthalpy')) / (steam - boiling);
a = alpha(present);
z = X(present);
others = a ~= 1 & a ~= alpha(light);
equation = @(t) (alpha(light) - t) * (t - 1) * (sum(a(others) .* z(others) ./ (a(others) - t)) - 1 + q) ...
                + alpha(light) * X(light) * (t - 1) - X(heavy) * (alpha(light) - t);
root = fzero(equation, [1 alpha(light)], optimset('TolX', 1e-14));
leastReflux = sum(a .* top(present) / D ./ (a - root)) - 1;
if leastReflux <= 0
    error('Distillation: the feed separates without reflux: the minimum reflux ratio is %g.', leastReflux);
end
reflux = getParameter('reflux factor') * leastReflux;

% Gilliland in Molokanov's form, and Kirkbride.
x = (reflux - leastReflux) / (reflux + 1);
y = 1 - exp((1 + 54.4 * x) / (11 + 117.2 * x) * (x - 1) / sqrt(x));
stages = (leastStages + y) / (1 - y);
sections = (X(heavy) / X(light) * (bottom(light) / B / (top(heavy) / D))^2 * B / D)^0.206;

xD = top / D;
hD = boilingEnthalpy(xD, condenserP);
hB = boilingEnthalpy(bottom / B, reboilerP);
condenser = D * (reflux + 1) * (flashProperty(xD, 'pressure', condenserP, 'vaporFraction', 1, 'enthalpy') - hD);
reboiler = D * hD + B * hB + condenser - total * getFeedProp(1, 'enthalpy');

setProduct(1, D, xD, 'pressure', condenserP, 'enthalpy', hD);
setProduct(2, B, bottom / B, 'pressure', reboilerP, 'enthalpy', hB);
values = [alpha(light), leastStages, leastReflux, reflux, stages, ...
          stages * sections / (1 + sections), condenser, reboiler];
for i = 1:length(results)
    setParameter(results{i}, values(i));
end

function i = findKey(names, name)
i = find(strcmpi(names, name));
if isempty(i)
    error('Distillation: the key "%s" is not among the compounds of the flowsheet.', name);
end

function alpha = volatility(X, P, heavy)
% Of each compound to the heavy key, where half of X is vapour; 1 for absent compounds.
[phases, fractions, compositions] = flashEquilibrium(X, 'pressure', P, 'vaporFraction', 0.5);
isVapor = strcmpi(phases, 'vapor');
y = compositions(:, isVapor);
x = compositions(:, ~isVapor) * fractions(~isVapor)' / sum(fractions(~isVapor));
K = y ./ x;
alpha = K / K(heavy);
alpha(X == 0) = 1;

function h = boilingEnthalpy(X, P)
% Of a liquid at its bubble point, J/mol. A product is set by it, since on hosts that list their liquid first it takes
% no vapour fraction.
h = flashProperty(X, 'pressure', P, 'vaporFraction', 0, 'enthalpy');
