% A component splitter: a given share of each compound goes to product 1.
%
% The rest goes to product 2. It stands for a separation whose result is known but whose equipment is not.
% Add a parameter 'share of ' and the compound's name for each compound that
% does not have the common share.
%
% Parameters
%   common share      of each compound without a parameter of its own, to product 1
%   share of methane  of methane, to product 1
%   share of ethane   of ethane, to product 1
%   temperature 1     of product 1
%   temperature 2     of product 2
%   pressure drop     from the feed to both products
% Results
%   duty              enthalpy of the products less that of the feed

feed = getFeedProp(1, 'flow');          % mol/s, in the order of compNames
P = getFeedProp(1, 'pressure') - getParameter('pressure drop');  % Pa
if P <= 0
    error('Component splitter: the pressure drop is too large: the products would be at %g Pa.', P);
end

share = getParameter('common share') * ones(nComp, 1);
for i = 1:nComp
    try
        share(i) = getParameter(['share of ' compNames{i}]);
    catch failure
        if isempty(strfind(failure.message, 'Invalid parameter name'))
            rethrow(failure);
        end
    end
end
if any(share < 0 | share > 1)
    error('Component splitter: each share must be between 0 and 1.');
end

flows = {share .* feed, feed - share .* feed};
heat = -sum(feed) * getFeedProp(1, 'enthalpy');  % W
for product = 1:2
    T = getParameter(sprintf('temperature %d', product));
    total = sum(flows{product});
    X = getFeedProp(1, 'fraction');     % of a product without flow
    if total > 0
        X = flows{product} / total;
        heat = heat + total * flashProperty(X, 'temperature', T, 'pressure', P, 'enthalpy');
    end
    setProduct(product, total, X, 'temperature', T, 'pressure', P);
end
setParameter('duty', heat);
