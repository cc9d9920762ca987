# A virtual screen, and the program played on it by scenarios. To be sourced.

# startScreen SIZE FOLDER: starts Xvfb on a free display, sets DISPLAY and screenProcess. Its
# messages go to FOLDER.
startScreen() {
    local output number
    # It must outlive each of its clients.
    exec {output}< <(exec Xvfb -displayfd 1 -screen 0 "${1}x24" -dpi 96 -nolisten tcp -noreset \
        2>"$2/Xvfb.log")
    screenProcess=$!
    if ! read -r -t 60 number <&"$output"; then
        echo "No virtual screen:" >&2
        cat "$2/Xvfb.log" >&2
        return 1
    fi
    export DISPLAY=":$number"
}

stopScreen() {
    kill "${screenProcess:-}" 2>/dev/null || true
    wait "${screenProcess:-}" 2>/dev/null || true
}

# play PROGRAM FOLDER [VARIABLE=VALUE...]: plays the scenario on standard input with Qt's own dialogs
# and look. FOLDER stands for the user's home, so nothing remembered and no preference of this
# machine shows.
play() {
    env --ignore-environment PATH="$PATH" HOME="$2" XDG_CONFIG_HOME="$2/config" \
        XDG_CONFIG_DIRS="$2/config" XDG_RUNTIME_DIR="$2" DISPLAY="$DISPLAY" QT_QPA_PLATFORM=xcb \
        QT_STYLE_OVERRIDE=fusion LC_ALL=C.UTF-8 PELMARK_DRIVER_SCRIPT=/dev/stdin "${@:3}" \
        "$1" 2>"$2/messages" || { cat "$2/messages" >&2 && return 1; }
}
