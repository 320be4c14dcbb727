function count = getProductCount(varargin)
%GETPRODUCTCOUNT The number of product ports.
%
%  count = getProductCount()
%
%  Example: share = 1 / getProductCount
%
%  See also GETFEEDCOUNT, SETPRODUCT.

count = CapeOpenUnitMex('getProductCount', varargin{:});
