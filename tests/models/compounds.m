function c = compounds ()
  % Critical point and heat capacities: Reid, Prausnitz, Poling, The Properties of Gases and Liquids, 4th edition
  % (1987); formation: Perry's handbook, 8th edition. Columns, one row a compound of c.names; cp in powers of T.
  table = {'methane', 16.043, 190.4, 46.0, 0.011, [1.925e+1, 5.213e-2, 1.197e-5, -1.132e-8], -74520, -50490
           'ethane', 30.070, 305.4, 48.8, 0.099, [5.409e+0, 1.781e-1, -6.938e-5, 8.713e-9], -83820, -31920
           'propane', 44.097, 369.8, 42.5, 0.153, [-4.224e+0, 3.063e-1, -1.586e-4, 3.215e-8], -104680, -24390
           'n-butane', 58.124, 425.2, 38.0, 0.199, [9.487e+0, 3.313e-1, -1.108e-4, -2.822e-9], -125790, -16700
           'n-pentane', 72.151, 469.7, 33.7, 0.251, [-3.626e+0, 4.873e-1, -2.580e-4, 5.305e-8], -146760, -8813
           'nitrogen', 28.014, 126.2, 33.9, 0.039, [3.115e+1, -1.357e-2, 2.680e-5, -1.168e-8], 0, 0
           'carbon dioxide', 44.009, 304.1, 73.8, 0.239, [1.980e+1, 7.344e-2, -5.602e-5, 1.715e-8], -393510, -394370
           'water', 18.015, 647.3, 221.2, 0.344, [3.224e+1, 1.924e-3, 1.055e-5, -3.596e-9], -241814, -228590
           'benzene', 78.114, 562.2, 48.9, 0.212, [-3.392e+1, 4.739e-1, -3.017e-4, 7.130e-8], 82880, 129600
           'toluene', 92.141, 591.8, 41.0, 0.263, [-2.435e+1, 5.125e-1, -2.765e-4, 4.911e-8], 50170, 122200
           'carbon monoxide', 28.010, 132.9, 35.0, 0.066, [3.087e+1, -1.285e-2, 2.789e-5, -1.272e-8], -110530, -137150
           'hydrogen', 2.016, 33.0, 12.9, -0.216, [2.714e+1, 9.274e-3, -1.381e-5, 7.645e-9], 0, 0
           'oxygen', 31.998, 154.6, 50.4, 0.025, [2.811e+1, -3.680e-6, 1.746e-5, -1.065e-8], 0, 0};
  c.names = table(:, 1)';
  c.mass = cell2mat (table(:, 2)) / 1000; % kg/mol
  c.Tc = cell2mat (table(:, 3));
  c.Pc = cell2mat (table(:, 4)) * 1e5;
  c.omega = cell2mat (table(:, 5));
  c.cp = cell2mat (table(:, 6));
  c.H = cell2mat (table(:, 7));
  c.G = cell2mat (table(:, 8));
end
