% Fails a function that waits for a user.

function solvaneNobodyAnswers (name)
  error ("%s: it waits for a user, and there is none at this Octave; take it out of the script", name);
end
