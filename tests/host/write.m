% Replaces a file by one with this text.
function write (file, text)
  handle = fopen (file, 'w');
  fwrite (handle, text);
  fclose (handle);
end
