%Solvane Unit Operation Script
clear functions
clear globals
clear variables
lasterr('')
%note: when changing globals, change unitCalc.m header
global nComp nPhase compNames phaseNames phaseAggregationStates AGGSTATE_UNKNOWN AGGSTATE_VAPOR AGGSTATE_LIQUID AGGSTATE_SOLID unit_ID setEchoOnValue
%phase type definitions
AGGSTATE_UNKNOWN=0;
AGGSTATE_VAPOR=1;
AGGSTATE_LIQUID=2;
AGGSTATE_SOLID=3;
%init
echo initRun off
initRun
CapeOpenUnitMex(1,unit_ID);%init run
%run user script
disp('MATLAB output:')
%all on single line: affects echo
try; if (setEchoOnValue); echo unitCalc on; echo on; else echo unitCalc off; echo off; end; unitCalc; echo off; catch; echo off; disp(['Evaluation error: ' lasterr]); end;
CapeOpenUnitMex(2);%term run
disp('MATLAB done')
