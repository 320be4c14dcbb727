#!/bin/sh
# Makes the release files twice, in two folders, and checks that the bytes are equal:
#   sameBytesTest.sh ROOT win64|win32 CHMCMD WORK
set -eu
root=$1
system=$2
chmcmd=$3
work=$4
"$root/scripts/models"
export SOURCE_DATE_EPOCH=1700000000
version=$(head -n 1 "$root/VERSION")

for folder in "$work/one" "$work/another/one"; do
    rm -rf "$folder"
    mkdir -p "$folder/src"
    cp -r "$root/build/$system/help" "$folder/book"
    python3 "$root/help/compileBook.py" "$folder/book" "$chmcmd" "$folder/book.chm"
    "$root/installer/stage" "$system" "$folder/stage"
    cp -r "$root/installer" "$folder" # as in a later checkout
    cp -r "$root/src/resources" "$folder/src"
    "$folder/installer/makeSetup" "$system" "$folder/stage" "$version" "$folder/Solvane.exe" -DQUICK
    sleep 2.1 # a setup keeps even seconds
done
diff -r "$work/one" "$work/another/one"
echo passed
