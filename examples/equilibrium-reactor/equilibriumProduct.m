function [product, lnK] = equilibriumProduct(T, P, feed, nu, vapor)
%EQUILIBRIUMPRODUCT What a gas reaction makes of a feed, at equilibrium.
%
%  [product, lnK] = equilibriumProduct(T, P, feed, nu, vapor)
%
%  T, P     temperature, K, and pressure, Pa
%  feed     flow of each compound, mol/s, a column
%  nu       moles that form of each compound, a column
%  vapor    name of the vapour phase, whose fugacity coefficients count; ''
%           for an ideal gas
%  product  flow of each compound, mol/s, a column
%  lnK      natural logarithm of the constant
%
% The extent lies between those at which a reactant or a product runs out. It
% is written as low + share (high - low), with the logarithm of share/(1-share)
% as the unknown: near the ends, too, the equation is almost straight in it.

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
