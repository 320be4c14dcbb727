% The bytes of a file; empty if it cannot be read. Octave's own fileread is no built-in function.

function text = solvaneReadText (file)
  mlock (); % each run forgets the other functions, and would read this one again
  text = "";
  handle = fopen (file);
  if (handle >= 0)
    text = fread (handle, Inf, "*char")';
    fclose (handle);
  end
end
