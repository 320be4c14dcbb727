% Compressor with isentropic efficiency
P2 = getParameter('outlet pressure');
eta = getParameter('efficiency');
F = getFeedProp(1, 'totalFlow');
z = getFeedProp(1, 'fraction');
h1 = getFeedProp(1, 'enthalpy');
s1 = getFeedProp(1, 'entropy');
h2s = flashProperty(z, 'pressure', P2, 'entropy', s1, 'enthalpy');
h2 = h1 + (h2s - h1) / eta;
setProduct(1, F, z, 'pressure', P2, 'enthalpy', h2);
setParameter('power', F * (h2 - h1));
fprintf('power %.1f kW\n', F * (h2 - h1) / 1000);
