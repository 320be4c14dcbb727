% A counter-current heat exchanger of two streams, with a check of the pinch.
%
% Feed and product 1 are the hot stream, feed and product 2 the cold one. Each
% is at the pressure of its product. The duty is divided into equal zones, so
% that boiling and condensing count in the mean temperature difference.
%
% Parameters
%   specification           which of the next four holds
%   UA                      used if it is the specification: coefficient of heat transfer times area
%   given duty              used if it is the specification
%   hot outlet temperature  used if it is the specification
%   approach                used if it is the specification: smallest temperature difference
%   hot pressure drop       of the hot stream
%   cold pressure drop      of the cold stream
% Results
%   duty                    from the hot to the cold stream
%   heat transfer           UA that the duty needs
%   smallest approach       smallest temperature difference, at the pinch
%   pinch temperature       of the hot stream at the pinch

hot = readSide(1, getParameter('hot pressure drop'));
cold = readSide(2, getParameter('cold pressure drop'));
if hot.T <= cold.T
    error('Heat exchanger: the hot feed, at %.2f K, must be hotter than the cold feed, at %.2f K.', hot.T, cold.T);
end

% No stream gets beyond the inlet temperature of the other one.
most = min(hot.flow * (hot.h - flashProperty(hot.X, 'pressure', hot.P, 'temperature', cold.T, 'enthalpy')), ...
           cold.flow * (flashProperty(cold.X, 'pressure', cold.P, 'temperature', hot.T, 'enthalpy') - cold.h));
tight = optimset('TolX', 1e-10 * most);
specification = getParameter('specification');
if most == 0
    specification = 'no flow';
end
switch specification
    case 'no flow'
        duty = 0;
    case 'UA'
        UA = getParameter('UA');
        duty = fzero(@(Q) UA * meanDifference(Q, hot, cold) - Q, [0 most], tight);
    case 'given duty'
        duty = getParameter('given duty');
    case 'hot outlet temperature'
        T = getParameter('hot outlet temperature');
        duty = hot.flow * (hot.h - flashProperty(hot.X, 'pressure', hot.P, 'temperature', T, 'enthalpy'));
    case 'approach'
        approach = getParameter('approach');
        if approach > hot.T - cold.T
            error('Heat exchanger: the approach, %g K, exceeds the difference of the feeds, %g K.', ...
                  approach, hot.T - cold.T);
        end
        duty = fzero(@(Q) smallestDifference(Q, hot, cold) - approach, [0 most], tight);
end
if duty < 0
    error('Heat exchanger: the hot stream would be heated: the duty would be %g W.', duty);
elseif duty > most
    error('Heat exchanger: a duty of %g kW is too much for these feeds, which can exchange %g kW at most.', ...
          duty / 1e3, most / 1e3);
end
[hotT, coldT] = profiles(duty, hot, cold);
[approach, place] = min(hotT - coldT);
if approach <= 0
    error(['Heat exchanger: the temperatures cross: a duty of %g kW is too much for these feeds. The hot stream ' ...
           'would have %.2f K where the cold one has %.2f K.'], duty / 1e3, hotT(place), coldT(place));
end

setProduct(1, hot.flow, hot.X, 'pressure', hot.P, 'enthalpy', hot.h - perMole(duty, hot));
setProduct(2, cold.flow, cold.X, 'pressure', cold.P, 'enthalpy', cold.h + perMole(duty, cold));
setParameter('duty', duty);
setParameter('heat transfer', duty / meanDifference(duty, hot, cold));
setParameter('smallest approach', approach);
setParameter('pinch temperature', hotT(place));

report = sprintf('%12s %12s %12s %12s\n', 'duty/kW', 'hot/K', 'cold/K', 'approach/K');
for i = 1:length(hotT)
    report = [report sprintf('%12.3f %12.3f %12.3f %12.3f\n', (i - 1) / (length(hotT) - 1) * duty / 1e3, ...
                             hotT(i), coldT(i), hotT(i) - coldT(i))];
end
setReport('Profile', report);

function side = readSide(feed, drop)
% A stream at the pressure of its product, with its enthalpy and temperature there.
side.flow = getFeedProp(feed, 'totalFlow');
side.X = getFeedProp(feed, 'fraction');
side.h = getFeedProp(feed, 'enthalpy');
side.P = getFeedProp(feed, 'pressure') - drop;
if side.P <= 0
    error('Heat exchanger: a pressure drop is too large: product %d would be at %g Pa.', feed, side.P);
end
side.T = temperatureAt(side, side.h);

function T = temperatureAt(side, h)
[phases, fractions, compositions, T] = flashEquilibrium(side.X, 'pressure', side.P, 'enthalpy', h);

function h = perMole(duty, side)
h = 0;
if side.flow > 0
    h = duty / side.flow;
end

function [hotT, coldT] = profiles(duty, hot, cold)
% Temperatures at the borders of the zones, from the inlet of the hot stream.
zones = 20;
hotT = zeros(1, zones + 1);
coldT = hotT;
for i = 0:zones
    hotT(i + 1) = temperatureAt(hot, hot.h - i / zones * perMole(duty, hot));
    coldT(i + 1) = temperatureAt(cold, cold.h + (1 - i / zones) * perMole(duty, cold));
end

function difference = smallestDifference(duty, hot, cold)
[hotT, coldT] = profiles(duty, hot, cold);
difference = min(hotT - coldT);

function difference = meanDifference(duty, hot, cold)
% The duty over the UA that it needs; 0 if the temperatures cross. The zones
% have logarithmic means, in a form that also holds for equal ends.
[hotT, coldT] = profiles(duty, hot, cold);
ends = hotT - coldT;
if any(ends <= 0)
    difference = 0;
    return
end
total = ends(1:end-1) + ends(2:end);
x = diff(ends) ./ total;
mean = total / 2 .* (1 - x.^2 / 3);
uneven = abs(x) > 1e-4;
mean(uneven) = total(uneven) / 2 .* x(uneven) ./ atanh(x(uneven));
difference = length(mean) / sum(1 ./ mean);
