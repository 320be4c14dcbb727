function value = flashProperty(varargin)
%FLASHPROPERTY An overall property of a composition at two conditions.
%
%  value = flashProperty(X, name1, value1, name2, value2, property)
%
%  X               overall mole fractions, nComp values in the order of
%                  compNames, a row or a column
%  name1, name2    the two conditions: two of 'temperature' (K), 'pressure'
%                  (Pa), 'vaporFraction' (mol/mol), 'enthalpy',
%                  'enthalpyF', 'enthalpyNF', 'internalEnergy', 'energy'
%                  (J/mol), 'entropy', 'entropyF', 'entropyNF' (J/mol/K)
%                  and 'volume' (m3/mol)
%  value1, value2  their values
%  property        'enthalpy', 'enthalpyF', 'enthalpyNF', 'internalEnergy'
%                  (J/mol), 'entropy', 'entropyF', 'entropyNF' (J/mol/K) or
%                  'volume' (m3/mol)
%  value           a number: that of all phases together
%
%  Example: H = flashProperty(Z, 'temperature', 300, 'pressure', 1e5, 'enthalpy')
%
%  See also FLASHEQUILIBRIUM, GETFEEDPROP.

value = CapeOpenUnitMex('flashProperty', varargin{:});
