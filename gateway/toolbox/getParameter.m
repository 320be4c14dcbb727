function value = getParameter(varargin)
%GETPARAMETER The value of a parameter.
%
%  value = getParameter(name)
%
%  name   name of the parameter, in any case of its letters
%  value  a number for a real or an integer parameter, 1 or 0 for a boolean
%         one, text for a string
%
%  Example: duty = getParameter('Heat duty')
%
%  See also SETPARAMETER.

value = CapeOpenUnitMex('getParameter', varargin{:});
