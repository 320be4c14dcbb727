function flows = moleFlows (stream)
  % Of each compound, mol/s, a row.
  flows = stream.totalFlow * cell2mat (struct2cell (stream.fraction)).';
end
