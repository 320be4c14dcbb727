#!/bin/sh
# Draws unit.ico beside itself with ImageMagick: a vessel that a script works in, with a feed and two products.
# Only needed when the drawing changes. All is drawn on a grid of 16 units, so that edges are sharp at 16 pixels,
# and four times finer than it will be seen.
set -eu
folder=$(cd "$(dirname "$0")" && pwd)
parts=$(mktemp -d)
trap 'rm -r "$parts"' EXIT

dark='fill #23405c'
feed='fill #4b5a68 path "M 0,7 L 4,7 L 4,9 L 0,9 Z"'
top='fill #d9632a path "M 12,2 L 16,2 L 16,4 L 12,4 Z"'
bottom='fill #2478bd path "M 12,12 L 16,12 L 16,14 L 12,14 Z"'
shell="$dark roundrectangle 3,0 12.99,16 4,3.2"
inside='fill #eef5fb roundrectangle 4,1 11.99,15 3,2.4'
liquid='fill #8cc3ea path "M 4,10 L 12,10 L 12,12.6 A 3,2.4 0 0 1 9,15 L 7,15 A 3,2.4 0 0 1 4,12.6 Z"'
# A prompt: the vessel does what is typed here.
prompt="$dark path \"M 5,4 L 6.5,4 L 9,6.5 L 6.5,9 L 5,9 L 7.5,6.5 Z\" path \"M 8.5,8 L 11,8 L 11,9 L 8.5,9 Z\""
shine='fill #ffffff80 roundrectangle 4.7,10.6 5.3,13 0.3,0.3'

set --
for size in 16 24 32 48 64 256; do
    details=
    # There is room to show where the streams go.
    if [ "$size" -ge 32 ]; then
        details=$shine
        feed='fill #4b5a68 path "M 0,7.25 L 1,7.25 L 1,5.5 L 3.5,8 L 1,10.5 L 1,8.75 L 0,8.75 Z"'
        top='fill #d9632a path "M 12,2.25 L 13.5,2.25 L 13.5,0.5 L 16,3 L 13.5,5.5 L 13.5,3.75 L 12,3.75 Z"'
        bottom='fill #2478bd path "M 12,12.25 L 13.5,12.25 L 13.5,10.5 L 16,13 L 13.5,15.5 L 13.5,13.75 L 12,13.75 Z"'
    fi
    fine=$((size * 4))
    convert -size ${fine}x$fine xc:none -draw "scale $((size / 4)),$((size / 4))
        $feed $top $bottom $shell $inside $liquid $details $prompt" \
        -filter box -resize ${size}x$size -depth 8 "$parts/$size.png"
    set -- "$@" "$parts/$size.png"
done
convert "$@" "$folder/unit.ico"
