function values = getCompoundConstant(varargin)
%GETCOMPOUNDCONSTANT A constant of all compounds.
%
%  values = getCompoundConstant(name)
%
%  name    a constant such as 'molecularWeight' (g/mol), 'normalBoilingPoint'
%          (K), 'criticalPressure' (Pa) or 'casRegistryNumber'
%  values  a column, nComp by 1, in the order of compNames: numbers, with NaN
%          for a compound that lacks the constant; or, if the constant is
%          text, a cell column, with '' for such a compound
%
%  getPropertyUnit(name) returns the unit of measure.
%
%  Example: M = getCompoundConstant('molecularWeight')
%
%  See also GETTDEPENDENTPROPERTY, GETPDEPENDENTPROPERTY, GETPROPERTYUNIT.

values = CapeOpenUnitMex('getCompoundConstant', varargin{:});
