# A virtual screen, and hands and eyes for a program on it. To be sourced.
# What is waited for is polled; what does not come in waitSeconds ends the script with its name.

waitSeconds=60

# waitFor "what is waited for" command...: until the command succeeds, or the program has ended.
waitFor() {
    local what=$1 end=$((SECONDS + waitSeconds))
    shift
    until "$@"; do
        if [[ -n "${program:-}" ]] && ! kill -0 "$program" 2>/dev/null; then
            echo "The program ended before $what." >&2
            return 1
        fi
        if ((SECONDS >= end)); then
            echo "Waited $waitSeconds s in vain for $what." >&2
            return 1
        fi
        sleep 0.05
    done
}

# startScreen SIZE FOLDER: starts Xvfb on a display that is free, sets DISPLAY and screenProcess.
# FOLDER takes its messages.
startScreen() {
    local size=$1 folder=$2
    # It must outlive each of its clients: xdotool is one that comes and goes.
    Xvfb -displayfd 3 -screen 0 "${size}x24" -dpi 96 -nolisten tcp -noreset \
        3>"$folder/display" >"$folder/Xvfb.log" 2>&1 &
    screenProcess=$!
    waitFor "the virtual screen" test -s "$folder/display"
    DISPLAY=":$(<"$folder/display")"
    export DISPLAY
}

stopScreen() {
    kill "$screenProcess" 2>/dev/null || true
    wait "$screenProcess" 2>/dev/null || true
}

# The id of the window that is on the screen under a title, a regular expression.
windowTitled() {
    xdotool search --onlyvisible --name "$1" 2>/dev/null | head -n 1 | grep .
}

isGone() {
    ! windowTitled "$1" >/dev/null
}

# Waits for a window and hands it the keyboard, which nobody else does without a window manager.
enterWindow() {
    waitFor "the window \"$1\"" windowTitled "$1" >/dev/null
    window=$(windowTitled "$1")
    xdotool windowfocus --sync "$window"
}

# drag X1 Y1 X2 Y2: presses at the first point of the window and goes to the second; `drop` lets go.
drag() {
    xdotool mousemove --window "$window" "$1" "$2" mousedown 1 \
        mousemove --window "$window" $((($1 + $3) / 2)) $((($2 + $4) / 2)) \
        mousemove --window "$window" "$3" "$4"
}

drop() {
    xdotool mouseup 1
}

# takePicture FILE: of the window, as soon as it shows something else than the picture before and
# has stopped changing.
takePicture() {
    waitFor "a new picture in the window ($(basename "$1"))" isSettled "$1"
    lastPicture=$(pixelsOf "$1")
}

# Leaves the lowest part out: buttons look pressed for a moment before they act.
pixelsOf() {
    convert "$1" -crop '100%x85%+0+0' +repage -format '%#' info:
}

isSettled() {
    local before now
    import -window "$window" "$1" && before=$(pixelsOf "$1")
    import -window "$window" "$1" && now=$(pixelsOf "$1")
    [[ "$before" == "$now" && "$now" != "${lastPicture:-}" ]]
}
