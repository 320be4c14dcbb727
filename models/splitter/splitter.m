% A splitter: each product has the state of the feed, and a share of its flow.
%
% With other products, add a parameter for each but the last, which gets the rest.
%
% Parameters
%   share of product 1  of the feed's flow
%   share of product 2  of the feed's flow

flow = getFeedProp(1, 'totalFlow');     % mol/s
X = getFeedProp(1, 'fraction');
P = getFeedProp(1, 'pressure');         % Pa
h = getFeedProp(1, 'enthalpy');         % J/mol

share = zeros(getProductCount, 1);
for product = 1:getProductCount - 1
    share(product) = getParameter(sprintf('share of product %d', product));
end
if any(share < 0) || sum(share) > 1 + 1e-12
    error('Splitter: the shares must be at least 0 and not exceed 1 together, but are%s.', ...
          sprintf(' %g', share(1:end-1)));
end
share(end) = max(1 - sum(share), 0);

for product = 1:getProductCount
    setProduct(product, share(product) * flow, X, 'pressure', P, 'enthalpy', h);
end
