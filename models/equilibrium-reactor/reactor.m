% A reactor in which one gas reaction reaches equilibrium.
%
% It is adiabatic or at a given temperature. Compounds that do not react pass
% through.
%
% Parameters
%   reaction              the reaction between names of compounds, with blanks around the signs, as
%                         'carbon monoxide + 3 hydrogen = methane + water'
%   adiabatic             true: no heat is exchanged; false: the outlet has the parameter 'temperature'
%   temperature           of the outlet, if the reactor is not adiabatic
%   pressure drop         from the feed to the outlet
%   real gas              true: equilibrium of fugacities; false: of partial pressures
% Results
%   conversion            of the first compound of the reaction: below 0 if the reaction runs backwards, 0 without
%                         that compound in the feed
%   outlet temperature    of the product
%   duty                  above 0 if the reactor is heated
%   equilibrium constant  at the outlet temperature, standard pressure 101325 Pa
%
% All data come from the simulator's property package: formation energies and
% ideal-gas properties for the constant, enthalpies with heats of formation
% for the heat balance, fugacity coefficients for the real gas.

[nu, key] = stoichiometry(getParameter('reaction'), compNames);
feed = getFeedProp(1, 'flow');                                      % mol/s
feedT = getFeedProp(1, 'temperature');                              % K
P = getFeedProp(1, 'pressure') - getParameter('pressure drop');     % Pa
isAdiabatic = getParameter('adiabatic');
vapor = '';
if getParameter('real gas')
    % Spelled as in the simulator; materials of CAPE-OPEN 1.0 have no phaseNames.
    names = [phaseNames(strcmpi(phaseNames, 'vapor')) {'vapor'}];
    vapor = names{1};
end
if sum(feed) == 0
    setProduct(1, 0, getFeedProp(1, 'fraction'), 'temperature', feedT, 'pressure', P);
    setParameter('conversion', 0);
    setParameter('outlet temperature', feedT);
    setParameter('duty', 0);
    setParameter('equilibrium constant', exp(logEquilibriumConstant(feedT, nu)));
    return
elseif ~(P > 0)
    error('Reactor: the pressure drop is too large: the outlet would be at %g Pa.', P);
end

heatOf = @(flow, T) sum(flow) * ...
         flashProperty(flow / sum(flow), 'temperature', T, 'pressure', P, 'enthalpyF');    % W
feedHeat = sum(feed) * getFeedProp(1, 'enthalpyF');                 % W
if isAdiabatic
    % The enthalpy of a gas at equilibrium rises with temperature, so steps from
    % the feed temperature in the right direction must pass the solution.
    excess = @(T) heatOf(equilibriumProduct(T, P, feed, nu, vapor), T) - feedHeat;
    near = feedT;
    step = 100;                                                     % K
    if excess(near) > 0
        step = -0.1 * feedT;
    end
    far = near + step;
    while excess(far) * step < 0
        near = far;
        far = near + step;
    end
    T = fzero(excess, sort([near far]), optimset('TolX', 1e-10));
else
    T = getParameter('temperature');
end

[product, lnK] = equilibriumProduct(T, P, feed, nu, vapor);
X = product / sum(product);
if isAdiabatic
    conditions = {'pressure', P, 'enthalpyF', feedHeat / sum(product)};
else
    conditions = {'temperature', T, 'pressure', P};
end
[phases, fractions, compositions, T] = flashEquilibrium(X, conditions{:});
if sum(fractions(~strcmpi(phases, 'vapor'))) > 1e-6
    error('Reactor: a liquid forms at the outlet, at %.2f K and %.3f bar. This model is for gases only.', ...
          T, P / 1e5);
end
duty = heatOf(product, T) - feedHeat;
conversion = 0;
if feed(key) > 0
    conversion = 1 - product(key) / feed(key);
end

setProduct(1, sum(product), X, conditions{:});
setParameter('conversion', conversion);
setParameter('outlet temperature', T);
setParameter('duty', duty);
setParameter('equilibrium constant', exp(lnK));

report = sprintf('%s\n', getParameter('reaction'));
report = [report sprintf('Outlet at %.2f K and %.3f bar, duty %.3f kW\n', T, P / 1e5, duty / 1e3)];
report = [report sprintf('Equilibrium constant %.6g, conversion of %s %.4f\n', ...
                         exp(lnK), compNames{key}, conversion)];
report = [report sprintf('  %-20s %12s %12s %9s\n', 'mol/s', 'feed', 'product', 'fraction')];
for i = 1:nComp
    report = [report sprintf('  %-20s %12.5f %12.5f %9.6f\n', compNames{i}, feed(i), product(i), X(i))];
end
setReport('Reactor', report);
