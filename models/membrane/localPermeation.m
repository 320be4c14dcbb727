function [y, J] = localPermeation(x, permeance, highP, lowP)
%LOCALPERMEATION Local permeate and flux of a membrane in cross-flow.
%
%  [y, J] = localPermeation(x, permeance, highP, lowP)
%
%  x          mole fractions of the gas on the feed side, a column
%  permeance  of each compound, mol/(m2 s Pa), a column
%  highP      pressure on the feed side, Pa
%  lowP       pressure on the permeate side, Pa, above 0
%  y          mole fractions of the local permeate, a column
%  J          flux of all compounds together, mol/(m2 s)
%
%  J and y are 0 if the partial pressures of the compounds that permeate do not
%  exceed lowP together: nothing permeates.
%
% In cross-flow the permeate side holds only the gas that permeates locally:
% y(i) J is the flux permeance(i) (highP x(i) - lowP y(i)), so that
%
%    y(i) = permeance(i) highP x(i) / (J + permeance(i) lowP),   sum(y) = 1.
%
% 1/sum(y) rises with J, is concave, and reaches 1 between 0 and the flux into
% a vacuum. So Newton's steps from 0 rise to the solution without passing it.

supply = permeance .* x * highP;
back = permeance * lowP;
permeates = supply > 0;
y = zeros(size(x));
J = 0;
if sum(supply(permeates) ./ back(permeates)) <= 1
    return
end
for iteration = 1:100
    y(permeates) = supply(permeates) ./ (J + back(permeates));
    total = sum(y);
    if total - 1 <= 1e-13
        y = y / total;
        return
    end
    J = J + total * (total - 1) / sum(y(permeates) ./ (J + back(permeates)));
end
error('Membrane: the local permeate was not found.');
