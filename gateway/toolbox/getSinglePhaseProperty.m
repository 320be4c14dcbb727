function value = getSinglePhaseProperty(varargin)
%GETSINGLEPHASEPROPERTY A property of one phase.
%
%  value = getSinglePhaseProperty(name, phase, T, P, X)
%
%  name   a property such as 'enthalpy' (J/mol), 'volume' (m3/mol),
%         'viscosity' (Pa s) or 'fugacityCoefficient', or its derivative,
%         with '.Dtemperature', '.Dpressure', '.Dmoles' or '.DmolFraction'
%         after it
%  phase  name of the phase, as in phaseNames or, if that is empty, as
%         getFeedEquilibrium returns it
%  T      temperature, K
%  P      pressure, Pa
%  X      mole fractions in the phase, nComp values in the order of
%         compNames, a row or a column
%  value  depending on the number of values from the host: a number; a
%         column, nComp by 1, of one value for each compound; or nComp by
%         nComp, for the derivatives of such a column, filled with the host's
%         values column by column
%
%  getPropertyUnit(name) returns the unit of measure.
%
%  Example: H = getSinglePhaseProperty('enthalpy', 'Vapor', 300, 1e5, [0.4; 0.6])
%
%  See also GETTWOPHASEPROPERTY, GETPROPERTYUNIT.

value = CapeOpenUnitMex('getSinglePhaseProperty', varargin{:});
