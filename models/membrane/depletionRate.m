function rate = depletionRate(u, feed, leastFlow, permeance, highP, lowP)
%DEPLETIONRATE Rate at which the gas along a membrane loses its compounds.
%
%  rate = depletionRate(u, feed, leastFlow, permeance, highP, lowP)
%
%  u          natural logarithm of feed over local flow of each compound
%  feed       flow of each compound at the entry, mol/s, a column
%  leastFlow  total flow below which nothing permeates any more, mol/s
%  rate       change of u with the area, 1/m2, a column
%
%  The other arguments are those of LOCALPERMEATION.
%
% The rate is the flux y J of a compound divided by its flow, in a form that
% also holds for a compound without flow.

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
