% Fails a function that ends Octave.

function solvaneStays (name)
  error ("%s would end Octave, not only the script; use return to end the script, or error to stop the calculation", name);
end
