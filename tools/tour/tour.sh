#!/usr/bin/env bash
# tour.sh: starts the panel on displays in memory, clicks through all offered pages and the dialogs in both languages,
# and saves a picture of each as build/tour/<language>-<page>.png; and one of the equalizer on small and scaled screens.
# tour.sh language zh|en, tour.sh screen WIDTHxHEIGHT DPI TASKBAR: one part of it (build/tour/screen-<WIDTHxHEIGHT>-<DPI>.png).
# Each part starts with a new headset and leaves no trace but the pictures.
set -euo pipefail
. "$(dirname "$0")/../setup/common.sh"
PICTURES=$BUILD/tour
FORM_WIDTH=1071           # of the main window at 100 %
CONTENT=865x590+206+69    # the part right of the navigation and below the top bar
REST_X=1030 REST_Y=860    # where the pointer waits, so that nothing is shown hovered

# All parts, as many at a time as there are cores; what a part prints comes when it has ended.
if [ $# = 0 ]; then
    say "no display: taking pictures of all pages and dialogs in both languages (15 seconds on two cores)"
    mkdir -p "$PICTURES"
    rm -f "$PICTURES"/*.png
    printf '%s\n' "language zh" "language en" "screen 1366x768 96 40" "screen 1280x720 96 48" \
        "screen 1920x1080 144 60" "screen 2560x1440 144 60" |
        xargs -P "$(nproc)" -I PART bash -c 'printed=$("$0" PART) && printf "%s\n" "$printed"' "$0" ||
        die "the tour stopped"
    cmp -s "$PICTURES/zh-volume.png" "$PICTURES/en-volume.png" &&
        die "both languages look the same, see $PICTURES/zh-volume.png and en-volume.png"
    say "the tour is complete"
    exit
fi

. "$(dirname "$0")/../wine/session.sh"
. "$(dirname "$0")/../run-common.sh"
mkdir -p "$PICTURES"

# Sets X, Y, WIDTH and HEIGHT, the window's place on the screen; false while it is not there in its full size.
find_window() {
    local id geometry
    for id in $(xdotool search --onlyvisible --name '^QorSound Kit$' 2>/dev/null); do
        geometry=$(xdotool getwindowgeometry "$id" 2>/dev/null) || continue
        [[ $geometry =~ Position:\ (-?[0-9]+),(-?[0-9]+).*Geometry:\ ([0-9]+)x([0-9]+) ]] || continue
        X=${BASH_REMATCH[1]} Y=${BASH_REMATCH[2]} WIDTH=${BASH_REMATCH[3]} HEIGHT=${BASH_REMATCH[4]}
        [ "$WIDTH" -lt "$FORM_WIDTH" ] || return 0
    done
    return 1
}

start_panel() {
    (cd "$DIST" && exec "$WINE" ./QorSoundKit.exe) </dev/null >"$work/output" 2>&1 &
    panel=$!
    local deadline=$((SECONDS + 60))
    until find_window; do
        kill -0 "$panel" 2>/dev/null || no_window "the panel ended before its window appeared"
        [ "$SECONDS" -lt "$deadline" ] || no_window "the panel's window did not appear within 60 seconds"
        sleep 0.1
    done
}

no_window() {
    import -silent -window root "$PICTURES/no-window.png" || true
    die "$1; the screen is in $PICTURES/no-window.png"
}

# take FILE: a picture of the window, once two in a row are the same (at most three seconds); sets CONTENT_SUM.
take() {
    local shot=$work/shot.ppm last='' now=''
    for _ in $(seq 15); do
        import -silent -window root -crop "${WIDTH}x$HEIGHT+$X+$Y" +repage "$shot"
        now=$(sha256sum <"$shot")
        [ "$now" != "$last" ] || break
        last=$now
        sleep 0.1
    done
    CONTENT_SUM=$(convert "$shot" -write "$1" -crop "$CONTENT" +repage ppm:- | sha256sum)
}

click() {
    xdotool mousemove $((X + $1)) $((Y + $2)) sleep 0.05 click 1 sleep 0.05 \
        mousemove $((X + REST_X)) $((Y + REST_Y))
}

# walk LANGUAGE: a picture of every page and dialog. A click that changes nothing is given again, twice.
walk() {
    local name x y close_x close_y file before=''
    while read -r name x y close_x close_y; do
        case $name in ''|'#'*) continue ;; esac
        file=$PICTURES/$1-$name.png
        for _ in 1 2 3; do
            click "$x" "$y"
            take "$file"
            [ "$CONTENT_SUM" = "$before" ] || break
        done
        [ "$CONTENT_SUM" != "$before" ] || die "the click on \"$name\" at $x,$y did not change the page, see $file"
        before=$CONTENT_SUM
        [ -z "$close_x" ] || click "$close_x" "$close_y"
        printf '%s\n' "$file"
    done <"$ROOT/tools/tour/stops.txt"
}

end_shown_panel() {
    end_panel "$panel" || die "the panel did not end within 5 seconds"
    wait "$panel" || die "the panel ended with exit code $?"
}

# show_language zh|en
show_language() {
    start_display
    install_product_key
    set_value "$PRODUCT_KEY" language REG_DWORD "$([ "$1" = zh ] && echo 0 || echo 1)"
    headset plug
    start_panel
    walk "$1"
    end_shown_panel
}

# show_screen WIDTHxHEIGHT DPI TASKBAR
show_screen() {
    local file=$PICTURES/screen-$1-$2.png
    start_display "$@"
    install_product_key
    headset plug
    start_panel
    click $((100 * WIDTH / FORM_WIDTH)) $((260 * WIDTH / FORM_WIDTH)) # the equalizer, where stops.txt has it
    take "$file"
    end_shown_panel
    printf '%s\n' "$file"
}

"show_$1" "${@:2}"
