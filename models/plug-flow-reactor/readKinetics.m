function kinetics = readKinetics(file, compounds)
%READKINETICS Reactions and their rates from a text file.
%
%  kinetics = readKinetics(file, compounds)
%
%  file       name of the file: a heading, then a line for each reaction with
%             its equation, rate coefficient, activation energy in J/mol, and
%             the orders of the compounds in the rate, separated by commas:
%                toluene + hydrogen = benzene + methane, 1719, 212983, toluene 1, hydrogen 0.5
%             The coefficient is that of partial pressures in Pa, for a rate
%             in mol/(m3 s). Lines that start with # are comments.
%  compounds  names of the compounds, a cell
%  kinetics   for REACTIONRATES: nu, coefficient of each compound (row) in each
%             reaction (column); order, likewise; k0 and E, rows; key, number of
%             the first compound of each reaction
%
% The equation is as STOICHIOMETRY reads it.

text = fileread(file);
lines = regexp(text, '\r?\n', 'split');
lines = lines(~cellfun(@isempty, regexp(lines, '^\s*[^#\s]', 'once')));
lines = lines(2:end);                   % without the heading
kinetics.nu = zeros(length(compounds), length(lines));
kinetics.order = kinetics.nu;
for i = 1:length(lines)
    fields = strtrim(regexp(lines{i}, ',', 'split'));
    if length(fields) < 4
        error('Reactor: %s needs an equation, a coefficient, an energy and orders, not "%s".', file, lines{i});
    end
    [kinetics.nu(:, i), kinetics.key(i)] = stoichiometry(fields{1}, compounds);
    kinetics.k0(i) = str2double(fields{2});
    kinetics.E(i) = str2double(fields{3});
    if isnan(kinetics.k0(i)) || isnan(kinetics.E(i))
        error('Reactor: "%s" or "%s" in %s is not a number.', fields{2}, fields{3}, file);
    end
    for term = fields(4:end)
        parts = regexp(term{1}, '^(.*\S)\s+(\S+)$', 'tokens', 'once');
        place = [];
        if ~isempty(parts)
            place = find(strcmpi(compounds, parts{1}));
        end
        if isempty(place) || isnan(str2double(parts{2}))
            error('Reactor: "%s" in %s must be a compound of the flowsheet and its order.', term{1}, file);
        end
        kinetics.order(place, i) = str2double(parts{2});
    end
end
if isempty(lines)
    error('Reactor: %s has no reaction after its heading.', file);
end
