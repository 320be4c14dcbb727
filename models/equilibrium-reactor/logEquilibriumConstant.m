function lnK = logEquilibriumConstant(T, nu)
%LOGEQUILIBRIUMCONSTANT Natural logarithm of a gas reaction's equilibrium constant.
%
%  lnK = logEquilibriumConstant(T, nu)
%
%  T    temperature, K
%  nu   stoichiometric coefficient of each compound, a column
%  lnK  for a standard pressure of 101325 Pa, the pressure of the data
%
% The Gibbs energy of the reaction at 25 degrees Celsius is converted to T with
% the enthalpies and entropies of the ideal gases. Only differences of these
% are used, so the reference state of the simulator does not matter.

R = 8.314462618;                                                    % J/mol/K
T0 = 298.15;                                                        % K
G = getCompoundConstant('idealGasGibbsFreeEnergyOfFormationAt25C'); % J/mol
H = getCompoundConstant('idealGasEnthalpyOfFormationAt25C');        % J/mol
S = (H - G) / T0;
H = H + getTDependentProperty('idealGasEnthalpy', T) - getTDependentProperty('idealGasEnthalpy', T0);
S = S + getTDependentProperty('idealGasEntropy', T) - getTDependentProperty('idealGasEntropy', T0);
reacts = nu ~= 0;
lnK = -nu(reacts)' * (H(reacts) - T * S(reacts)) / (R * T);
if ~isfinite(lnK)
    error('Reactor: the property package lacks formation energies or ideal-gas data for a compound that reacts.');
end
