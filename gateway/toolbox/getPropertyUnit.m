function unit = getPropertyUnit(varargin)
%GETPROPERTYUNIT The unit of measure of a property.
%
%  unit = getPropertyUnit(name)
%
%  name  a property or constant, with or without the suffix of a derivative
%  unit  text; empty if the property has no unit
%
%  Example: u = getPropertyUnit('viscosity.Dtemperature')   gives 'Pa s / K'
%
%  See also GETFEEDPROP, GETCOMPOUNDCONSTANT, GETSINGLEPHASEPROPERTY.

unit = CapeOpenUnitMex('getPropertyUnit', varargin{:});
