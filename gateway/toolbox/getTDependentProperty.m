function values = getTDependentProperty(varargin)
%GETTDEPENDENTPROPERTY A property of the pure compounds at a temperature.
%
%  values = getTDependentProperty(name, T)
%
%  name    a property such as 'vaporPressure' (Pa), 'heatCapacityOfLiquid'
%          (J/mol/K) or 'volumeOfLiquid' (m3/mol), or its derivative, with
%          '.Dtemperature' after it
%  T       temperature, K
%  values  a column, nComp by 1, in the order of compNames
%
%  getPropertyUnit(name) returns the unit of measure.
%
%  Example: Psat = getTDependentProperty('vaporPressure', 300)
%
%  See also GETPDEPENDENTPROPERTY, GETCOMPOUNDCONSTANT, GETPROPERTYUNIT.

values = CapeOpenUnitMex('getTDependentProperty', varargin{:});
