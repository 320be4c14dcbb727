% The membrane module against analytical solutions of cross-flow permeation, and its error messages.
%   octave-cli MembraneTest.m WINE SOLVANEHOST CASE
here = fileparts (mfilename ('fullpath'));
addpath (here, fullfile (here, '..', 'examples'));

function [cut, area] = weller_steiner (xo, xf, alpha, ratio, flow_per_conductance)
  % Two compounds in cross-flow: S. Weller and W. A. Steiner, Chem. Eng. Prog. 46 (1950) 585, as C. J. Geankoplis
  % writes it in Transport Processes and Unit Operations, 3rd edition (1993), section 13.6. xf, xo: fraction of the
  % fast compound before and after the module; ratio: of the pressures, low to high; area: in units of
  % flow_per_conductance, the feed over the slow compound's permeance and the high pressure.
  D = 0.5 * ((1 - alpha) * ratio + alpha);
  F = -0.5 * ((1 - alpha) * ratio - 1);
  E = alpha / 2 - D * F;
  R = 1 / (2 * D - 1);
  S = (alpha * (D - 1) + F) / ((2 * D - 1) * (alpha / 2 - F));
  T = 1 / (1 - D - E / F);
  root = @(i) sqrt (D ^ 2 * i .^ 2 + 2 * E * i + F ^ 2);
  u = @(i) root (i) - D * i;
  io = xo / (1 - xo);
  in = xf / (1 - xf);
  slow_left = @(i) ((u (in) - E / D) ./ (u (i) - E / D)) .^ R ...
                   .* ((u (in) - alpha + F) ./ (u (i) - alpha + F)) .^ S .* ((u (in) - F) ./ (u (i) - F)) .^ T;
  cut = 1 - slow_left (io) * (1 - xf) / (1 - xo);
  f = @(i) D * i - F + root (i);
  integrand = @(i) slow_left (i) * (1 - xf) ./ ((f (i) - i) .* (1 ./ (1 + i) - ratio ./ (1 + f (i))));
  area = flow_per_conductance * quadgk (integrand, io, in, 'RelTol', 1e-12, 'AbsTol', 1e-14);
end

function refuse (program, case_file, changes, message)
  [result, text] = runCase (program, case_file, '1.1', changes);
  if (! isempty (result) || isempty (strfind (text, message)))
    error ('no refusal "%s" but\n%s', message, text);
  end
end

program = argv ()(1:2);
case_file = argv (){3};

% The case as it stands: 100 mol/s of 0.4 carbon dioxide from 20 to 1.5 bar through 300 m2.
[fast, slow] = deal (3.35e-7, 1.675e-8);
closed = @(xo) nthargout (1:2, @weller_steiner, xo, 0.4, fast / slow, 1.5 / 20, 100 / (slow * 2e6));
xo = fzero (@(xo) closed (xo){2} - 300, [0.02 0.39], optimset ('TolX', 1e-15));
cut = closed (xo){1};
purity = (0.4 - (1 - cut) * xo) / cut;
for generation = {'1.1', '1.0'}
  result = runCase (program, case_file, generation{:}, {});
  [permeate, retentate] = deal (result.streams(2), result.streams(3));
  expectNear ('permeate', moleFlows (permeate), 100 * cut * [purity 1-purity], 1e-8);
  expectNear ('retentate', moleFlows (retentate), 100 * (1 - cut) * [xo 1-xo], 1e-8);
  expectNear ('states', [permeate.temperature permeate.pressure retentate.temperature retentate.pressure], ...
              [310 1.5e5 310 2e6], 1e-6);
  p = result.parameters;
  expectNear ('results', [p.stageCut p.recovery p.permeatePurity], [cut purity*cut/0.4 purity], 1e-8);
end

% Into a vacuum the flow of a compound is that of the feed times exp (-permeance t), and area (t) is closed as well.
% Ethane has no parameter.
permeances = [fast slow 6.7e-9 0];
feed = [35 50 10 5];
area = @(t) sum ((feed .* -expm1 (-permeances * t) ./ permeances)(1:3)) + feed(4) * t;
t = fzero (@(t) area (t) - 300 * 2e6, [0 1e7]);
vacuum = {'"carbon dioxide", "methane"', '"carbon dioxide", "methane", "nitrogen", "ethane"'
          '"carbon dioxide": 0.4, "methane": 0.6', ...
          '"carbon dioxide": 0.35, "methane": 0.5, "nitrogen": 0.1, "ethane": 0.05'
          '"value": 1.5e5', '"value": 0.1'};
result = runCase (program, case_file, '1.1', vacuum);
[permeate, retentate] = deal (result.streams(2), result.streams(3));
expectNear ('retentate from a vacuum', moleFlows (retentate), feed .* exp (-permeances * t), 1e-4);
expectNear ('mass balance', moleFlows (permeate) + moleFlows (retentate), feed, 1e-9);
if (isempty (strfind (result.reports.Module, 'no parameter "permeance of ethane"')))
  error ('the report does not name the missing parameter of ethane:\n%s', result.reports.Module);
end

refuse (program, case_file, {'"value": 1.5e5', '"value": 2e6'}, 'the permeate pressure must lie between 0 and that');
refuse (program, case_file, {'"value": 300', '"value": 0'}, 'the area must be above 0');
refuse (program, case_file, {'"value": 300', '"value": 1e4'}, 'the whole feed permeates through less than 10000 m2');
refuse (program, case_file, {'"value": 1.675e-8', '"value": 0'; '"value": 1.5e5', '"value": 9e5'}, ...
        'nothing permeates');
refuse (program, case_file, {'"temperature": 310', '"temperature": 200'}, 'the feed must be a gas');
disp ('equal to the closed solutions, on both generations')
