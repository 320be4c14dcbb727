function r = rate(T, p, kin)
% Moe's equilibrium constant
R = 8.314;
K = exp(4577.8 / T - 4.33);
i = kin.index;
k = kin.k0 * exp(-kin.E / (R * T));
r = k * (p(i(1)) * p(i(2)) - p(i(3)) * p(i(4)) / K);
