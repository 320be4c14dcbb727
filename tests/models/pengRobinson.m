function [h, s, lnphi, v] = pengRobinson (phase, T, P, flows)
  % A phase, 'vapor' or 'liquid', by the Peng-Robinson equation; shares no code with the host.
  % flows: of the compounds of COMPOUNDS, in any unit, a column
  % h, s: enthalpy, J/mol, with heats of formation, and entropy, J/mol/K, from an arbitrary zero for each compound
  % lnphi: logarithms of the fugacity coefficients, a column; v: m3/mol
  R = 8.314462618;
  y = flows / sum (flows);
  c = compounds ();
  kappa = 0.37464 + 1.54226 * c.omega - 0.26992 * c.omega .^ 2;
  root = sqrt (0.4572355289 * R ^ 2 * c.Tc .^ 2 ./ c.Pc) .* (1 + kappa .* (1 - sqrt (T ./ c.Tc)));
  slope = -sqrt (0.4572355289 * R ^ 2 * c.Tc .^ 2 ./ c.Pc) .* kappa ./ (2 * sqrt (T * c.Tc));
  bi = 0.0777960739 * R * c.Tc ./ c.Pc;
  [a, b] = deal ((y' * root) ^ 2, y' * bi);
  [A, B] = deal (a * P / (R * T) ^ 2, b * P / (R * T));
  Z = roots ([1, B - 1, A - 3 * B ^ 2 - 2 * B, -(A * B - B ^ 2 - B ^ 3)]);
  Z = real (Z(abs (imag (Z)) < 1e-9 & real (Z) > B));
  if (strcmp (phase, 'vapor'))
    Z = max (Z);
  else
    Z = min (Z);
  end
  L = log ((Z + (1 + sqrt (2)) * B) / (Z + (1 - sqrt (2)) * B)) / (2 * sqrt (2));
  lnphi = bi / b * (Z - 1) - log (Z - B) - A / B * (2 * root / sqrt (a) - bi / b) * L;
  da = 2 * sqrt (a) * (y' * slope);
  h = R * T * (Z - 1) + (T * da - a) / b * L + y' * (c.H + (c.cp ./ (1:4)) * (T .^ (1:4) - 298.15 .^ (1:4))');
  heats = c.cp(:, 1) * log (T / 298.15) + (c.cp(:, 2:4) ./ (1:3)) * (T .^ (1:3) - 298.15 .^ (1:3))';
  s = R * log (Z - B) + da / b * L + y' * heats - R * sum (y(y > 0) .* log (y(y > 0))) - R * log (P / 1e5);
  v = Z * R * T / P;
end
