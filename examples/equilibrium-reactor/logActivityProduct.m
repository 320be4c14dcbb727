function lnQ = logActivityProduct(flow, T, P, nu, vapor)
%LOGACTIVITYPRODUCT What the equilibrium constant is compared with.
%
%  lnQ = logActivityProduct(flow, T, P, nu, vapor)
%
%  flow  of each compound in the gas, mol/s, a column, above 0 for those that
%        react
%  lnQ   sum of nu times the logarithm of the fugacity in 101325 Pa
%
%  The other arguments are those of EQUILIBRIUMPRODUCT.

y = flow / sum(flow);
reacts = nu ~= 0;
activity = y * (P / 101325);
if ~isempty(vapor)
    activity = activity .* getSinglePhaseProperty('fugacityCoefficient', vapor, T, P, y);
end
lnQ = nu(reacts)' * log(activity(reacts));
