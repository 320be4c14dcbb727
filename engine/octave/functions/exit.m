% Fails: it would end Octave, and with it the calculation, without a message.

function exit (varargin)
  solvaneStays ("exit");
end
