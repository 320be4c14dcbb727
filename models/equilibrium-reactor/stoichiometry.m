function [nu, key] = stoichiometry(reaction, compounds)
%STOICHIOMETRY The stoichiometric coefficients of a reaction.
%
%  [nu, key] = stoichiometry(reaction, compounds)
%
%  reaction   text such as 'nitrogen + 3 hydrogen = 2 ammonia', with blanks
%             around the signs
%  compounds  names of the compounds, a cell
%  nu         coefficient of each compound, a column: below 0 for those on the
%             left, 0 for those that do not react
%  key        number of the first compound of the reaction
%
% A reaction that does not conserve mass is an error: a coefficient is wrong.

sides = regexp(reaction, '\s=\s', 'split');
if length(sides) ~= 2
    error('Reactor: the reaction "%s" must have two sides with " = " between them.', reaction);
end
nu = zeros(length(compounds), 1);
key = 0;
for side = 1:2
    terms = regexp(sides{side}, '\s\+\s', 'split');
    for term = 1:length(terms)
        name = strtrim(terms{term});
        [first, rest] = strtok(name);
        coefficient = str2double(first);
        if isnan(coefficient)
            coefficient = 1;
        else
            name = strtrim(rest);
        end
        place = find(strcmpi(compounds, name));
        if isempty(place)
            error('Reactor: the reaction needs "%s", which is not among the compounds of the flowsheet: %s.', ...
                  name, strtrim(sprintf('%s  ', compounds{:})));
        end
        nu(place) = nu(place) + coefficient * (2 * side - 3);
        if key == 0
            key = place;
        end
    end
end
mass = nu .* getCompoundConstant('molecularWeight');                % g/mol
mass = mass(nu ~= 0);
if ~(abs(sum(mass)) <= 1e-3 * sum(abs(mass)))
    error('Reactor: the reaction "%s" makes %.2f g of %.2f g. A coefficient is wrong.', ...
          reaction, sum(mass(mass > 0)), -sum(mass(mass < 0)));
end
