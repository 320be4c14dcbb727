function values = getPDependentProperty(varargin)
%GETPDEPENDENTPROPERTY A property of the pure compounds at a pressure.
%
%  values = getPDependentProperty(name, P)
%
%  name    a property such as 'boilingPointTemperature' or
%          'meltingTemperature' (K), or its derivative, with '.Dpressure'
%          after it
%  P       pressure, Pa
%  values  a column, nComp by 1, in the order of compNames
%
%  getPropertyUnit(name) returns the unit of measure.
%
%  Example: Tb = getPDependentProperty('boilingPointTemperature', 101325)
%
%  See also GETTDEPENDENTPROPERTY, GETCOMPOUNDCONSTANT, GETPROPERTYUNIT.

values = CapeOpenUnitMex('getPDependentProperty', varargin{:});
