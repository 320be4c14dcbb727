function setProduct(varargin)
%SETPRODUCT Sets flow, composition and conditions of a product.
%
%  setProduct(product, flow, composition, name1, value1, name2, value2)
%
%  product         number of the product port, counted from 1
%  flow            total flow, mol/s
%  composition     mole fractions, nComp values in the order of compNames,
%                  a row or a column; they are not normalised and must
%                  sum to 1
%  name1, name2    the two conditions: two of 'temperature' (K), 'pressure'
%                  (Pa), 'vaporFraction' (mol/mol), 'enthalpy',
%                  'enthalpyF', 'enthalpyNF', 'internalEnergy', 'energy'
%                  (J/mol), 'entropy', 'entropyF', 'entropyNF' (J/mol/K)
%                  and 'volume' (m3/mol); state 'vaporFraction' first:
%                  with thermodynamics of version 1.1 the other order
%                  can fail
%  value1, value2  their values
%
%  The unit flashes the product at these conditions when the script has
%  ended. Every product needs this call; another call replaces the first.
%
%  Example: setProduct(1, 10, [0.4; 0.6], 'temperature', 300, 'pressure', 1e5)
%
%  See also FLASHEQUILIBRIUM, GETFEEDPROP.

CapeOpenUnitMex('setProduct', varargin{:});
