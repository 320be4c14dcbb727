% Nobody sits at this Octave: a script that stops for input fails where it would wait for ever.

function keyboard (varargin)
  error ("keyboard: there is no keyboard to take commands from");
end
