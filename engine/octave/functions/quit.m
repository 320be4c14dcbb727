% Fails: it would end Octave, and with it the calculation, without a message.

function quit (varargin)
  solvaneStays ("quit");
end
