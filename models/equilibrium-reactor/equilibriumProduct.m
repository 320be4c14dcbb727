function [product, lnK] = equilibriumProduct(T, P, feed, nu, vapor)
%EQUILIBRIUMPRODUCT The product of a gas reaction at equilibrium.
%
%  [product, lnK] = equilibriumProduct(T, P, feed, nu, vapor)
%
%  T, P     temperature, K, and pressure, Pa
%  feed     flow of each compound, mol/s, a column
%  nu       stoichiometric coefficient of each compound, a column, above 0
%           for those that form
%  vapor    name of the vapour phase, for its fugacity coefficients; '' for
%           an ideal gas
%  product  flow of each compound, mol/s, a column
%  lnK      natural logarithm of the equilibrium constant
%
% The extent of reaction lies between low, where a product runs out, and high,
% where a reactant runs out. It is written as low + share (high - low), and the
% unknown is the logarithm of share/(1-share), in which the equation is almost
% linear even near the ends.

lnK = logEquilibriumConstant(T, nu);
made = nu > 0;
used = nu < 0;
low = max(-feed(made) ./ nu(made));
high = min(-feed(used) ./ nu(used));
product = feed;
if ~(high > low)
    return
end
flowAt = @(z) feed + nu * (low + (high - low) / (1 + exp(-z)));
gap = @(z) logActivityProduct(flowAt(z), T, P, nu, vapor) - lnK;
farthest = 30;
if gap(farthest) <= 0
    z = Inf;
elseif gap(-farthest) >= 0
    z = -Inf;
else
    z = fzero(gap, [-farthest farthest], optimset('TolX', 1e-12));
end
product = max(flowAt(z), 0);
