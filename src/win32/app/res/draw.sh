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
