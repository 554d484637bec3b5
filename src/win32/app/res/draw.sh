#!/usr/bin/env bash
# Redraws the program's icon and caption-button bitmaps (ImageMagick). The
# results are committed; the build does not run this.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

# button NAME WIDTH TOP BOTTOM BORDER SHIFT GLYPH...: a 17-pixel-high caption
# button with a vertical gradient, a one-pixel border and a white glyph; SHIFT
# moves the glyph one pixel down and right for the pressed look.
button() {
  local name=$1 width=$2 top=$3 bottom=$4 border=$5 shift=$6; shift 6
  convert -size "${width}x17" "gradient:${top}-${bottom}" \
    -fill none -stroke "$border" -strokewidth 1 -draw "rectangle 0,0 $((width - 1)),16" \
    -stroke white -strokewidth 2 -fill white \
    -draw "translate $shift,$shift $*" \
    -type TrueColor "BMP3:$name.bmp"
}

cross="line 18,5 24,11 line 24,5 18,11"
bar="rectangle 9,11 16,12"
button close_normal 43 '#D46A6A' '#A83A3A' '#7A2626' 0 "$cross"
button close_hover 43 '#F08080' '#D04848' '#7A2626' 0 "$cross"
button CLOSE_DOWN 43 '#8E2E2E' '#B54848' '#5C1A1A' 1 "$cross"
button minimize_normal 26 '#7C9CC4' '#4D6F9A' '#30486A' 0 "$bar"
button minimize_hover 26 '#9DBBE0' '#6A8DBA' '#30486A' 0 "$bar"
button MINIMIZE_DOWN 26 '#3E5C84' '#5A7AA4' '#1F3350' 1 "$bar"

# The program's icon: a white check mark on a blue tile, at 32 and 16 pixels.
convert -size 32x32 xc:none -fill '#2F6DB5' -stroke '#1B4A80' -draw "roundrectangle 1,1 30,30 6,6" \
  -fill none -stroke white -strokewidth 4 -draw "stroke-linejoin round stroke-linecap round polyline 8,16 14,22 24,10" icon32.png
convert icon32.png -resize 16x16 icon16.png
convert icon16.png icon32.png tessmark.ico
rm icon16.png icon32.png

# icon NAME SIZE DRAW...: a transparent square icon of one size.
icon() {
  local name=$1 size=$2; shift 2
  convert -size "${size}x${size}" xc:none "$@" "$name.png"
  convert "$name.png" "$name.ico"
  rm "$name.png"
}

# The section tree's pictures, by their index in the tree's image list.
icon tree1 16 -fill '#F2C14E' -stroke '#9A7420' -draw "polygon 1,3 6,3 7,5 14,5 14,13 1,13"  # folder
icon tree2 16 -fill '#4D8FD6' -stroke '#24507F' -draw "circle 8,5 8,2" \
  -draw "roundrectangle 3,9 13,15 3,3"  # one person
icon tree3 16 -stroke '#30486A' -fill '#6FB56F' -draw "rectangle 1,1 7,7" -fill '#4D8FD6' -draw "rectangle 8,1 14,7" \
  -fill '#E0A040' -draw "rectangle 1,8 7,14" -fill '#B070C0' -draw "rectangle 8,8 14,14"  # registry blocks
icon tree4 16 -fill '#7FA7D8' -stroke '#30486A' -draw "circle 11,4 11,2" -draw "roundrectangle 7,7 15,13 2,2" \
  -fill '#4D8FD6' -stroke '#24507F' -draw "circle 5,6 5,3" -draw "roundrectangle 0,9 10,15 3,3"  # people
icon tree5 16 -fill '#DDE6F0' -stroke '#30486A' -draw "rectangle 1,1 14,10" -fill '#4D8FD6' -draw "rectangle 3,3 12,8" \
  -fill '#30486A' -draw "rectangle 6,11 9,12" -draw "rectangle 3,13 12,14"  # computer

# The details panel's marks for an enabled and a disabled item.
icon check 48 -fill '#3DA35D' -stroke '#23693A' -strokewidth 2 -draw "circle 24,24 24,3" \
  -fill none -stroke white -strokewidth 6 -draw "stroke-linejoin round stroke-linecap round polyline 13,25 21,33 35,16"
icon nocheck 48 -fill '#C84B4B' -stroke '#7A2626' -strokewidth 2 -draw "circle 24,24 24,3" \
  -stroke white -strokewidth 6 -draw "stroke-linecap round line 16,16 32,32 line 32,16 16,32"
