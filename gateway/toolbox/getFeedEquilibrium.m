function [phases, fractions, compositions, T, P] = getFeedEquilibrium(varargin)
%GETFEEDEQUILIBRIUM The phases of a feed.
%
%  [phases, fractions, compositions, T, P] = getFeedEquilibrium(feed)
%
%  feed          number of the feed port, counted from 1
%  phases        names of the present phases, a cell row
%  fractions     mole fraction of each phase, a row
%  compositions  mole fractions, nComp by phases: compositions(i,j) is that
%                of compound compNames{i} in phase phases{j}
%  T             temperature, K
%  P             pressure, Pa
%
%  Nothing is calculated: these are the values in the stream.
%
%  Example: [phases, beta] = getFeedEquilibrium(1)
%
%  See also FLASHEQUILIBRIUM, GETFEEDPROP.

[phases, fractions, compositions, T, P] = CapeOpenUnitMex('getFeedEquilibrium', varargin{:});
