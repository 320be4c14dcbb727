function [phases, fractions, compositions, T, P] = flashEquilibrium(varargin)
%FLASHEQUILIBRIUM The phases of a composition at two conditions.
%
%  [phases, fractions, compositions, T, P] = flashEquilibrium(X, name1, value1, name2, value2)
%
%  X               overall mole fractions, nComp values in the order of
%                  compNames, a row or a column
%  name1, name2    the two conditions: two of 'temperature' (K), 'pressure'
%                  (Pa), 'vaporFraction' (mol/mol), 'enthalpy',
%                  'enthalpyF', 'enthalpyNF', 'internalEnergy', 'energy'
%                  (J/mol), 'entropy', 'entropyF', 'entropyNF' (J/mol/K)
%                  and 'volume' (m3/mol)
%  value1, value2  their values
%  phases          names of the present phases, a cell row
%  fractions       mole fraction of each phase, a row
%  compositions    mole fractions, nComp by phases: compositions(i,j) is that
%                  of compound compNames{i} in phase phases{j}
%  T               temperature, K
%  P               pressure, Pa
%
%  Example: [phases, beta] = flashEquilibrium(Z, 'temperature', 300, 'pressure', 1e5)
%
%  See also FLASHPROPERTY, GETFEEDEQUILIBRIUM, SETPRODUCT.

[phases, fractions, compositions, T, P] = CapeOpenUnitMex('flashEquilibrium', varargin{:});
