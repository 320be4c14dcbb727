function setParameter(varargin)
%SETPARAMETER Sets the value of a parameter.
%
%  setParameter(name, value)
%
%  name   name of the parameter, in any case of its letters
%  value  a number for a real or an integer parameter, which rounds it; a
%         number, a logical value, 'true' or 'false' for a boolean one; text
%         for a string
%
%  Example: setParameter('Heat duty', 1.5e6)
%
%  See also GETPARAMETER.

CapeOpenUnitMex('setParameter', varargin{:});
