% Fails a function that waits for a user.

function solvaneNobodyAnswers (name)
  error ("%s waits for a user, but this Octave runs without one; remove it from the script", name);
end
