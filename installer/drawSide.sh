#!/bin/sh
# Draws side.bmp, the picture on the left of setup's first and last page, from the unit's icon with ImageMagick. Only
# needed when the icon changes.
set -eu
folder=$(cd "$(dirname "$0")" && pwd)
convert -size 164x314 'gradient:#ffffff-#c5dff2' \
    '(' "$folder/../src/resources/unit.ico[5]" -filter box -resize 128x128 ')' -gravity center -geometry +0-30 -composite \
    +dither -colors 256 -type Palette -compress none "BMP3:$folder/side.bmp"
