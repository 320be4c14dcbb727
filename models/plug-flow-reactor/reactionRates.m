function rates = reactionRates(kinetics, T, P, flow)
%REACTIONRATES Rates of gas reactions.
%
%  rates = reactionRates(kinetics, T, P, flow)
%
%  kinetics  as READKINETICS reads them
%  T, P      temperature, K, and pressure, Pa
%  flow      of each compound, mol/s, a column
%  rates     of the reactions, mol/(m3 s), a column
%
% A rate is k0 exp(-E/(R T)) times the partial pressures to the powers of their
% orders. Without a compound of an order above 0 there is no reaction.

R = 8.314462618;                        % J/mol/K
pressure = P * flow / sum(flow);        % Pa
rates = zeros(length(kinetics.k0), 1);
for i = 1:length(rates)
    acts = kinetics.order(:, i) ~= 0;
    rates(i) = kinetics.k0(i) * exp(-kinetics.E(i) / (R * T)) * prod(pressure(acts) .^ kinetics.order(acts, i));
end
