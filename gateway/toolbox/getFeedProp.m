function value = getFeedProp(varargin)
%GETFEEDPROP A property of a feed.
%
%  value = getFeedProp(feed, property)
%
%  feed      number of the feed port, counted from 1
%  property  'temperature' (K), 'pressure' (Pa), 'totalFlow' (mol/s),
%            'enthalpy', 'enthalpyF', 'enthalpyNF', 'internalEnergy',
%            'energy' (J/mol), 'entropy', 'entropyF', 'entropyNF'
%            (J/mol/K) or 'volume' (m3/mol), each a number;
%            'flow' (mol/s) or 'fraction' (mol/mol), each a column,
%            nComp by 1, in the order of compNames
%
%  Example: T = getFeedProp(1, 'temperature')
%
%  See also GETFEEDEQUILIBRIUM, GETPROPERTYUNIT, SETPRODUCT.

value = CapeOpenUnitMex('getFeedProp', varargin{:});
