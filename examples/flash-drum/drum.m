% A flash drum: the feed is brought to the drum's temperature and pressure,
% and separates into a vapour and a liquid product.
%
% Product 1 is the vapour, product 2 the liquid. A product whose phase does
% not form has no flow and the composition of the feed.

T = getParameter('temperature');     % K
P = getParameter('pressure');        % Pa
flow = getFeedProp(1, 'totalFlow');  % mol/s
X = getFeedProp(1, 'fraction');      % mole fractions, in the order of compNames

[phases, fractions, compositions] = ...
    flashEquilibrium(X, 'temperature', T, 'pressure', P);

productPhases = {'vapor', 'liquid'};
for product = 1:2
    phase = find(strcmpi(phases, productPhases{product}));
    if isempty(phase)
        setProduct(product, 0, X, 'temperature', T, 'pressure', P);
    else
        setProduct(product, flow * fractions(phase), ...
                   compositions(:, phase), 'temperature', T, 'pressure', P);
    end
end

% The duty is the enthalpy of the products minus that of the feed.
feedT = getFeedProp(1, 'temperature');
feedP = getFeedProp(1, 'pressure');
hFeed = flashProperty(X, 'temperature', feedT, 'pressure', feedP, 'enthalpy');
hDrum = flashProperty(X, 'temperature', T, 'pressure', P, 'enthalpy');
duty = flow * (hDrum - hFeed);       % W
setParameter('duty', duty);
fprintf('Duty: %.1f kW\n', duty / 1000);

report = sprintf('Flash drum at %.2f K and %.3f bar\n', T, P / 1e5);
for i = 1:length(phases)
    report = [report sprintf('  %-8s %8.4f mol/s\n', phases{i}, flow * fractions(i))];
end
report = [report sprintf('  Duty     %8.1f kW\n', duty / 1000)];
setReport('Drum', report);
