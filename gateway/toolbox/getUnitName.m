function name = getUnitName(varargin)
%GETUNITNAME The name of the unit operation.
%
%  name = getUnitName()
%
%  name  text
%
%  Example: disp(['This is ' getUnitName])
%
%  See also GETFEEDCOUNT, GETPRODUCTCOUNT.

name = CapeOpenUnitMex('getUnitName', varargin{:});
