function expectNear (what, value, expected, tolerance)
  if (! isequal (size (value), size (expected)) || ! all (abs (value - expected) <= tolerance))
    error ('%s: %s, expected %s', what, mat2str (value, 12), mat2str (expected, 12));
  end
end
