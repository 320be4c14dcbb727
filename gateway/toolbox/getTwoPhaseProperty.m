function value = getTwoPhaseProperty(varargin)
%GETTWOPHASEPROPERTY A property of two phases.
%
%  value = getTwoPhaseProperty(name, phase1, phase2, T, P, X1, X2)
%
%  name            'kvalue', 'logKvalue' or 'surfaceTension', or a
%                  derivative, with '.Dtemperature', '.Dpressure', '.Dmoles'
%                  or '.DmolFraction' after it
%  phase1, phase2  names of the phases, as in phaseNames or, if that is empty,
%                  as getFeedEquilibrium returns them
%  T               temperature, K
%  P               pressure, Pa
%  X1, X2          mole fractions in each phase, nComp values in the order
%                  of compNames, rows or columns
%  value           surface tensions: a number, or nComp by 2 for derivatives
%                  by composition, a column for each phase;
%                  k-values: a column, nComp by 1, or nComp by 2*nComp for
%                  derivatives by composition, nComp columns for each phase,
%                  filled with the host's values column by column
%
%  getPropertyUnit(name) returns the unit of measure.
%
%  Example: K = getTwoPhaseProperty('kvalue', 'Vapor', 'Liquid', 300, 1e5, Y, X)
%
%  See also GETSINGLEPHASEPROPERTY, GETPROPERTYUNIT.

value = CapeOpenUnitMex('getTwoPhaseProperty', varargin{:});
