function count = getFeedCount(varargin)
%GETFEEDCOUNT The number of feed ports.
%
%  count = getFeedCount()
%
%  Example: for feed = 1:getFeedCount, F(feed) = getFeedProp(feed, 'totalFlow'); end
%
%  See also GETPRODUCTCOUNT, GETFEEDPROP.

count = CapeOpenUnitMex('getFeedCount', varargin{:});
