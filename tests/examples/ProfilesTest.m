% The examples under every profile of the host: the results of the standard profile, to the last digit except where
% phases come in another order.
%   octave-cli ProfilesTest.m WINE SOLVANEHOST EXAMPLES
1;

function [result, text] = run (program, example, generation, profile)
  % Into a file: the first window starts Wine's desktop, which would keep a pipe open.
  file = [tempname() '.json'];
  log = tempname ();
  code = system (sprintf ('%s %s run %s --generation %s --profile %s --json %s </dev/null >%s 2>&1', program{:}, ...
                          example, generation, profile, file, log));
  text = sprintf ('exit code %d\n%s', code, fileread (log));
  delete (log);
  result = [];
  if (code == 0)
    result = rmfield (jsondecode (fileread (file)), 'log'); % some profiles log what they do
    delete (file);
  end
end

function list = numbers (value)
  % All numbers in a result, in a column.
  if (isstruct (value))
    list = cellfun (@numbers, struct2cell (value(:)), 'UniformOutput', false);
    list = vertcat (list{:});
  elseif (isnumeric (value))
    list = value(:);
  else
    list = [];
  end
end

function yes = is_equal (result, expected, same_order)
  if (same_order)
    yes = isequal (result, expected);
  else
    difference = numbers (result) - numbers (expected);
    yes = all (abs (difference) <= 1e-9 * max (1, abs (numbers (expected))));
  end
end

program = argv ()(1:2);
profiles = {'ui-thread-and-worker', true; 'early', true; 'reconnecting', true; 'strict', true; 'liquid-first', false; ...
            'reentrant', true};
count = 0;
for example = glob (fullfile (argv (){3}, '*', 'case.json'))'
  for generation = {'1.1', '1.0'}
    [expected, text] = run (program, example{1}, generation{1}, 'standard');
    if (isempty (expected))
      error ('%s, generation %s fails:\n%s', example{1}, generation{1}, text);
    end
    for profile = profiles'
      [result, text] = run (program, example{1}, generation{1}, profile{1});
      if (isempty (result) || ! is_equal (result, expected, profile{2}))
        error ('%s, generation %s, profile %s differs from standard:\n%s', example{1}, generation{1}, profile{1}, text);
      end
      ++count;
    end
  end
end
assert (count > 0);
printf ('%d runs as under the standard profile\n', count);
