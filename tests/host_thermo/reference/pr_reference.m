% Reference states for the property package, computed from the published equations by other means than the
% package's own: the cubic by its companion matrix (roots), mixing by the double sum of sqrt(a_i a_j), phase
% splits by plain successive substitution with the Rachford-Rice equation under fzero, da/dT by complex steps,
% ideal-gas heat by quadrature. No stability test: this file states which states have two phases.
%
%   octave-cli pr_reference.m FILE    writes the table that ReferenceTest.cpp includes
1;

function c = constants ()
  % Tc/K, Pc/bar, omega, heat capacity A B C D; rows in ReferenceTest's order. Source: Reid, Prausnitz, Poling,
  % The Properties of Gases and Liquids, 4th edition (1987), Appendix A.
  c = [ ...
    190.4  46.0 0.011  19.25   5.213e-2  1.197e-5 -1.132e-8   % methane
    305.4  48.8 0.099   5.409  1.781e-1 -6.938e-5  8.713e-9   % ethane
    369.8  42.5 0.153  -4.224  3.063e-1 -1.586e-4  3.215e-8   % propane
    425.2  38.0 0.199   9.487  3.313e-1 -1.108e-4 -2.822e-9   % n-butane
    469.7  33.7 0.251  -3.626  4.873e-1 -2.580e-4  5.305e-8   % n-pentane
    126.2  33.9 0.039  31.15  -1.357e-2  2.680e-5 -1.168e-8   % nitrogen
    304.1  73.8 0.239  19.80   7.344e-2 -5.602e-5  1.715e-8   % carbon dioxide
    647.3 221.2 0.344  32.24   1.924e-3  1.055e-5 -3.596e-9   % water
    562.2  48.9 0.212 -33.92   4.739e-1 -3.017e-4  7.130e-8   % benzene
    591.8  41.0 0.263 -24.35   5.125e-1 -2.765e-4  4.911e-8]; % toluene
end

function [a, b, ai, bi, aij] = parameters (T, x)
  c = constants ();
  R = 8.314462618;
  Tc = c(:,1); Pc = 1e5 * c(:,2); w = c(:,3);
  kappa = 0.37464 + 1.54226 * w - 0.26992 * w .^ 2;
  ai = 0.45723552892138219 * R ^ 2 * Tc .^ 2 ./ Pc .* (1 + kappa .* (1 - sqrt (T ./ Tc))) .^ 2;
  bi = 0.077796073903888455 * R * Tc ./ Pc;
  aij = sqrt (ai * ai.');
  a = x.' * aij * x;
  b = x.' * bi;
end

function Z = compressibility (T, P, x, phase)
  R = 8.314462618;
  [a, b] = parameters (T, x);
  A = a * P / (R * T) ^ 2;
  B = b * P / (R * T);
  r = roots ([1, -(1 - B), A - 3 * B ^ 2 - 2 * B, -(A * B - B ^ 2 - B ^ 3)]);
  r = real (r(abs (imag (r)) < 1e-9 & real (r) > B));
  if phase == 'V'
    Z = max (r);
  else
    Z = min (r);
  end
end

function lnphi = logcoefficients (T, P, x, phase)
  R = 8.314462618;
  [a, b, ai, bi, aij] = parameters (T, x);
  A = a * P / (R * T) ^ 2;
  B = b * P / (R * T);
  Z = compressibility (T, P, x, phase);
  lnphi = bi / b * (Z - 1) - log (Z - B) - A / (2 * sqrt (2) * B) * (2 * aij * x / a - bi / b) ...
          * log ((Z + (1 + sqrt (2)) * B) / (Z + (1 - sqrt (2)) * B));
end

function [H, S, V] = energies (T, P, x, phase)
  R = 8.314462618;
  c = constants ();
  [a, b] = parameters (T, x);
  step = 1e-30;
  slope = imag (parameters (complex (T, step), x)) / step;
  B = b * P / (R * T);
  Z = compressibility (T, P, x, phase);
  L = log ((Z + (1 + sqrt (2)) * B) / (Z + (1 - sqrt (2)) * B)) / (2 * sqrt (2) * b);
  H = R * T * (Z - 1) + (T * slope - a) * L;
  S = R * log (Z - B) + slope * L - R * log (P / 101325);
  V = Z * R * T / P;
  for i = find (x.' > 0)
    cp = @(t) c(i,4) + c(i,5) * t + c(i,6) * t .^ 2 + c(i,7) * t .^ 3;
    H += x(i) * quadgk (cp, 298.15, T, "AbsTol", 1e-10, "RelTol", 1e-13);
    S += x(i) * quadgk (@(t) cp (t) ./ t, 298.15, T, "AbsTol", 1e-13, "RelTol", 1e-13) - R * x(i) * log (x(i));
  end
end

function [x, y] = split (z, K, beta)
  x = z ./ (1 + beta * (K - 1));
  y = K .* x;
  x /= sum (x);
  y /= sum (y);
end

function K = wilson (T, P)
  c = constants ();
  K = 1e5 * c(:,2) / P .* exp (5.373 * (1 + c(:,3)) .* (1 - c(:,1) / T));
end

function [beta, x, y] = substitute (T, P, z, beta)
  % Phases of z at T and P; with beta given, phases of that vapour fraction, normalised whether they close or not.
  free = isnan (beta);
  present = z > 0;
  K = wilson (T, P);
  for k = 1:200000
    if free
      rr = @(b) sum (z .* (K - 1) ./ (1 + b * (K - 1)));
      beta = fzero (rr, [0, 1], optimset ("TolX", 1e-16));
    end
    [x, y] = split (z, K, beta);
    new = exp (logcoefficients (T, P, x, 'L') - logcoefficients (T, P, y, 'V'));
    change = max (abs (log (new(present) ./ K(present))));
    K = new;
    if change < 1e-14
      break;
    end
    if free && (sum (z .* K) <= 1 || sum (z ./ K) <= 1)
      error ("no split at %g K, %g Pa", T, P);
    end
    if k > 20000 && change < 1e-13
      break;
    end
  end
  x = z ./ (1 + beta * (K - 1));
  y = K .* x;
end

function row = state (T, P, beta, x, y)
  x /= sum (x);
  y /= sum (y);
  [HV, SV, VV] = energies (T, P, y, 'V');
  [HL, SL, VL] = energies (T, P, x, 'L');
  row = [T, P, beta, y.', x.', HV, HL, SV, SL, VV, VL];
end

function rows = compute ()
  % Order: methane, ethane, propane, n-butane, n-pentane, nitrogen, carbon dioxide, water, benzene, toluene.
  gas     = [0.50 0.20 0.15 0.10 0.05 0 0 0 0 0].';
  natural = [0.72 0.09 0.05 0.02 0.01 0.08 0.03 0 0 0].';
  aromatic = [0 0 0 0 0 0 0 0 0.4 0.6].';
  carbonated = [0 0 0 0 0 0 0.3 0.7 0 0].';
  retrograde = [0.7 0 0 0.3 0 0 0 0 0 0].';
  propane = [0 0 1 0 0 0 0 0 0 0].';
  benzene = [0 0 0 0 0 0 0 0 1 0].';
  rows = {};
  % Feed, kind of state, T, P.
  atTP = {gas, 300, 20e5; gas, 260, 20e5; natural, 200, 30e5; aromatic, 370, 1e5; carbonated, 400, 50e5;
          retrograde, 320, 118e5};
  for i = 1:rows_of (atTP)
    [z, T, P] = atTP{i,:};
    [beta, x, y] = substitute (T, P, z, NaN);
    rows(end+1,:) = {"false", z.', state(T, P, beta, x, y)};
  end
  % Feed, T, vapour fraction, bounds of P.
  atT = {gas, 250, 0, 60e5, 70e5; gas, 250, 0.4, 20e5, 60e5;
         propane, 300, 0.25, 9e5, 11e5; benzene, 353.2, 1, 0.9e5, 1.2e5};
  for i = 1:rows_of (atT)
    [z, T, beta, low, high] = atT{i,:};
    P = fzero (@(P) excess (T, P, z, beta), [low, high], optimset ("TolX", 1e-16));
    [~, x, y] = substitute (T, P, z, beta);
    rows(end+1,:) = {"true", z.', state(T, P, beta, x, y)};
  end
  % Feed, P, vapour fraction, bounds of T.
  atP = {gas, 20e5, 1, 310, 330; natural, 40e5, 0.9, 230, 260; aromatic, 1.01325e5, 0, 350, 380};
  for i = 1:rows_of (atP)
    [z, P, beta, low, high] = atP{i,:};
    T = fzero (@(T) excess (T, P, z, beta), [low, high], optimset ("TolX", 1e-16));
    [~, x, y] = substitute (T, P, z, beta);
    rows(end+1,:) = {"true", z.', state(T, P, beta, x, y)};
  end
end

function n = rows_of (cells)
  n = size (cells, 1);
end

function f = excess (T, P, z, beta)
  if nnz (z) == 1
    i = find (z);
    f = (logcoefficients (T, P, z, 'L') - logcoefficients (T, P, z, 'V'))(i);
  else
    [~, x, y] = substitute (T, P, z, beta);
    f = sum (y) - sum (x);
  end
end

function text = list (values)
  text = strjoin (arrayfun (@(v) sprintf ("%.15g", v), values, "UniformOutput", false), ", ");
end

function text = table (rows)
  % Rows: given vapour fraction or not, feed, T, P, vapour fraction, vapour, liquid; enthalpy, entropy, volume, each
  % of vapour and liquid.
  text = "";
  for i = 1:size (rows, 1)
    r = rows{i,3};
    text = [text, sprintf("{%s,\n {%s},\n %s,\n {%s},\n {%s},\n %s},\n", rows{i,1}, list (rows{i,2}), ...
                          list (r(1:3)), list (r(4:13)), list (r(14:23)), list (r(24:29)))];
  end
end

handle = fopen (argv (){1}, "w");
fputs (handle, table (compute ()));
fclose (handle);
