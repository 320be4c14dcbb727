% Functions with which a script reaches its unit operation.
%
% All quantities are in SI units and on a mole basis. Values of the compounds
% come as columns, nComp by 1, in the order of the global variable compNames,
% and are accepted as columns or rows. Ports are counted from 1. A function that
% fails ends the script with an error, unless the script catches it. Each
% function takes exactly the arguments that its help shows.
%
% Streams
%   getFeedCount           - The number of feed ports.
%   getFeedProp            - A property of a feed.
%   getFeedEquilibrium     - The phases of a feed.
%   getProductCount        - The number of product ports.
%   setProduct             - Sets flow, composition and conditions of a product.
%
% Flashes
%   flashEquilibrium       - The phases of a composition at two conditions.
%   flashProperty          - An overall property of a composition at two conditions.
%
% Properties
%   getSinglePhaseProperty - A property of one phase.
%   getTwoPhaseProperty    - A property of two phases.
%   getCompoundConstant    - A constant of all compounds.
%   getTDependentProperty  - A property of the pure compounds at a temperature.
%   getPDependentProperty  - A property of the pure compounds at a pressure.
%   getPropertyUnit        - The unit of measure of a property.
%
% The unit operation
%   getUnitName            - The name of the unit operation.
%   getParameter           - The value of a parameter.
%   setParameter           - Sets the value of a parameter.
%   setReport              - Sets the text of a report.
%   logMessage             - Writes a line to the host's log.
