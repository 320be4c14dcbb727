% Explains a character beyond ASCII at which Octave stops reading a script: most come with text that was copied from a
% document, and look like one that the language has.
%   shown, column: the line, and the byte in it at which Octave stopped
%   text: with "%s" for the place; empty if the character is ASCII

function text = solvaneStrayCharacter (shown, column)
  mlock (); % each run forgets the other functions, and would read this one again
  text = "";
  code = codeAt (shown, column);
  if (code < 128)
    return;
  end
  % In decimal: Octave's hexadecimal numbers have integer types, which differ with their digits.
  kinds = {"a typographic quote",        "write '",       [180, 8216:8219, 8242]; ...
           "a typographic quote",        "write \"",      [171, 187, 8220:8223, 8243]; ...
           "a typographic dash",         "write -",       [8208:8213, 8722]; ...
           "an ellipsis",                "write ...",     8230; ...
           "a multiplication sign",      "write *",       [183, 215, 8727, 8901]; ...
           "a sign of division",         "write /",       [247, 8260, 8725]; ...
           "a sign of comparison",       "write <=",      8804; ...
           "a sign of comparison",       "write >=",      8805; ...
           "a sign of comparison",       "write ~=",      8800; ...
           "a non-breaking space",       "write a blank", [160, 8239]; ...
           "a space of a special width", "write a blank", [8192:8202, 8287, 12288]; ...
           "an invisible character",     "remove it",     [173, 8203:8207, 8232:8238, 8288:8303, 65279]};
  kind = find (cellfun (@(codes) any (codes == code), kinds(:,3)), 1);
  [what, todo] = {"a character that is allowed only in texts and comments", "write another"}{:};
  if (! isempty (kind))
    [what, todo] = kinds{kind,1:2};
  end
  text = sprintf ("%s (U+%04X) in %%s; %s", what, code, todo);
end

% The character that begins there in UTF-8; 0 after the line's end, where Octave may stop, too.
function code = codeAt (shown, column)
  bytes = double (shown(column:min (column+3, end)));
  code = [bytes 0](1);
  count = sum (code >= [192 224 240]); % of the bytes that follow
  if (code < 128 || numel (bytes) <= count)
    return;
  end
  code = mod (code, 2^(6 - count));
  for byte = bytes(2:count+1)
    code = 64*code + mod (byte, 64);
  end
end
