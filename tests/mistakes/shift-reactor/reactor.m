% Adiabatic plug-flow reactor: CO + H2O = CO2 + H2
data = csvread('kinetics.csv', 1, 0);       % k0 [mol/(kg s bar^2)], E [J/mol]
cat = load('catalyst.mat');
kin.k0 = data(1, 1);
kin.E = data(1, 2);
kin.rho = cat.bulkDensity;                  % kg/m3
kin.activity = cat.activity;

n0 = getFeedProp(1, 'flow');
P = getFeedProp(1, 'pressure');
H0 = getFeedProp(1, 'totalFlow') * getFeedProp(1, 'enthalpyF');
V = getParameter('volume');

co = find(strcmpi(compNames, 'carbon monoxide'));
h2o = find(strcmpi(compNames, 'water'));
co2 = find(strcmpi(compNames, 'carbon dioxide'));
h2 = find(strcmpi(compNames, 'hydrogen'));
nu = zeros(nComp, 1);
nu([co h2o]) = -1;
nu([co2 h2]) = 1;
kin.index = [co h2o co2 h2];

if sum(n0) > 0
    opt = odeset('RelTol', 1e-8, 'AbsTol', 1e-8);
    [v, xi] = ode45(@(v, xi) slope(v, xi, n0, nu, P, H0, kin), [0 V], 0, opt);
    n = n0 + nu * xi(end);
    z = n / sum(n);
    H = H0 / sum(n);
    [ph, fr, x, T] = flashEquilibrium(z, 'pressure', P, 'enthalpyF', H);
else
    n = n0;
    z = getFeedProp(1, 'fraction');
    T = getFeedProp(1, 'temperature');
end
setProduct(1, sum(n), z, 'temperature', T, 'pressure', P);
X = 0;
if n0(co) > 0
    X = 1 - n(co) / n0(co);
end
setParameter('conversion', X);
setParameter('outlet temperature', T);

function d = slope(v, xi, n0, nu, P, H0, kin)
n = n0 + nu * xi;
[ph, fr, x, T] = flashEquilibrium(n / sum(n), 'pressure', P, 'enthalpyF', H0 / sum(n));
p = n / sum(n) * P / 1e5;
d = rate(T, p, kin) * kin.rho * kin.activity;
