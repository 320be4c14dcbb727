n = zeros(nComp, 1);
H = 0;
P = Inf;
for i = 1:getFeedCount
    n = n + getFeedProp(i, 'flow');
    H = H + getFeedProp(i, 'totalFlow') * getFeedProp(i, 'enthalpy');
    P = min(P, getFeedProp(i, 'pressure'));
end
F = sum(n);
s = getParameter('split');
if F > 0
    z = n / F;
    setProduct(1, s * F, z, 'pressure', P, 'enthalpy', H / F);
    setProduct(2, (1 - s) * F, z, 'pressure', P, 'enthalpy', H / F);
else
    z = getFeedProp(1, 'fraction');
    T = getFeedProp(1, 'temperature');
    setProduct(1, 0, z, 'temperature', T, 'pressure', P);
    setProduct(2, 0, z, 'temperature', T, 'pressure', P);
end
setReport('Summary', sprintf('total %.3f mol/s at %.2f bar', F, P / 1e5));
