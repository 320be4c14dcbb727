function logMessage(varargin)
%LOGMESSAGE Writes a line to the host's log.
%
%  logMessage(text)
%
%  text  one line; hosts without a log ignore it
%
%  Example: logMessage('column converged')
%
%  See also SETREPORT.

CapeOpenUnitMex('logMessage', varargin{:});
