function rate = depletionRate(u, feed, leastFlow, permeance, highP, lowP)
%DEPLETIONRATE How fast the gas along a membrane loses its compounds, per m2.
%
%  rate = depletionRate(u, feed, leastFlow, permeance, highP, lowP)
%
%  u          natural logarithm of feed over present flow of each compound
%  feed       flow of each compound at the entry, mol/s, a column
%  leastFlow  total flow below which nothing permeates any more, mol/s
%  rate       change of u with the area, 1/m2, a column
%
%  The other arguments are those of LOCALPERMEATION.
%
% The rate is the flux y J of a compound over its flow, written so that it
% holds for a compound of no flow too.

flow = feed .* exp(-u);
total = sum(flow);
rate = zeros(size(u));
if total <= leastFlow
    return
end
[y, J] = localPermeation(flow / total, permeance, highP, lowP);
if J > 0
    rate = permeance * highP ./ (J + permeance * lowP) * (J / total);
end
