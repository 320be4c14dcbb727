function lnQ = logActivityProduct(flow, T, P, nu, vapor)
%LOGACTIVITYPRODUCT Logarithm of the product of activities of a gas reaction.
%
%  lnQ = logActivityProduct(flow, T, P, nu, vapor)
%
%  flow  of each compound in the gas, mol/s, a column, above 0 for those that
%        react
%  lnQ   sum of nu times the logarithm of the fugacity over 101325 Pa, which
%        equals the logarithm of the constant at equilibrium
%
%  The other arguments are those of EQUILIBRIUMPRODUCT.

y = flow / sum(flow);
reacts = nu ~= 0;
activity = y * (P / 101325);
if ~isempty(vapor)
    activity = activity .* getSinglePhaseProperty('fugacityCoefficient', vapor, T, P, y);
end
lnQ = nu(reacts)' * log(activity(reacts));
