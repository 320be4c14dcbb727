#!/bin/sh
# That each command of the repository prints its help when asked for it, and does nothing else: scriptHelp.sh ROOT
cd "$1" || exit
faults=0
for command in bench release run soak test scripts/*; do
    [ -x "$command" ] || continue
    if [ "$(timeout 10 "./$command" --help | head -c 7)" != Usage:\  ]; then
        echo "./$command --help prints no help"
        faults=1
    fi
done
exit $faults
