function [y, J] = localPermeation(x, permeance, highP, lowP)
%LOCALPERMEATION What passes through a square metre of membrane in cross-flow.
%
%  [y, J] = localPermeation(x, permeance, highP, lowP)
%
%  x          mole fractions of the gas before the membrane, a column
%  permeance  of each compound, mol/(m2 s Pa), a column
%  highP      pressure before the membrane, Pa
%  lowP       pressure behind it, Pa, above 0
%  y          mole fractions of what comes out behind it, a column
%  J          flux of all compounds, mol/(m2 s)
%
%  J and y are 0 where the partial pressures of the compounds that permeate do
%  not exceed lowP together: nothing comes out.
%
% Behind the membrane stands only what just came through: y(i) J is the flux
% permeance(i) (highP x(i) - lowP y(i)), so that
%
%    y(i) = permeance(i) highP x(i) / (J + permeance(i) lowP),   sum(y) = 1.
%
% 1/sum(y) rises with J, is concave, and passes 1 between 0 and the flux into
% a vacuum. So Newton's steps from 0 climb to the solution and never pass it.

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
