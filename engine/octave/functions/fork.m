% Fails: fork would make a second Octave that answers the same server.

function varargout = fork (varargin)
  error ("fork: both Octaves would answer the unit; start a program with system instead");
end
