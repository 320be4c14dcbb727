% The flash drum on materials of both generations: equal streams, which agree with an independent flash.
%   octave-cli FlashDrumTest.m WINE SOLVANEHOST CASE
addpath (fileparts (mfilename ('fullpath')));
arguments = argv ();
results = {runCase(arguments(1:2), arguments{3}, '1.1', {}), runCase(arguments(1:2), arguments{3}, '1.0', {})};

% By tests/host_thermo/reference/pr_reference.m, which shares no code with the host.
feed_fraction = 0.858473018124072;
drum_fraction = 0.625606439077094;
vapor = [0.72737167797956; 0.19192472991892; 0.065074229332494; 0.013701410016909; 0.0019279527521177];
liquid = [0.12006508483445; 0.2134936641206; 0.29190978296263; 0.24420374496722; 0.1303277231151];
duty = -5747.774255; % J per mole of feed

for i = 1:2
  feed = results{i}.streams(1);
  products = results{i}.streams(2:3);
  expectNear ('vapour fraction of the feed', feed.vaporFraction, feed_fraction, 1e-9);
  expectNear ('flows', [products.totalFlow].', 100 * [drum_fraction; 1 - drum_fraction], 1e-7);
  expectNear ('vapour', cell2mat (struct2cell (products(1).fraction)), vapor, 1e-9);
  expectNear ('liquid', cell2mat (struct2cell (products(2).fraction)), liquid, 1e-9);
  expectNear ('temperatures', [products.temperature], [260 260], 1e-9);
  expectNear ('pressures', [products.pressure], [2e6 2e6], 1e-3);
  expectNear ('vapour fractions', [products.vaporFraction], [1 0], 1e-12);
  parameters = results{i}.parameters;
  expectNear ('duty', parameters.duty, 100 * duty, 1e-2);
  % The enthalpies of the table close the balance of the drum.
  balance = [products.totalFlow] * [products.enthalpy].' - feed.totalFlow * feed.enthalpy;
  expectNear ('enthalpy balance', balance, parameters.duty, 1e-3);
end
results{2}.generation = results{1}.generation;
if (! isequal (results{:}))
  error ('the two generations differ');
end
disp ('equal on both generations, and as the reference has them')
