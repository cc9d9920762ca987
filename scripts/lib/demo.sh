# The main job from open to save, played on the real programs. To be sourced after screen.sh.

# A file that the window refuses is checked, and prepared for it. Begins the folder of the results.
prepareRefused() {
    local tools=$root/build/release/bin/pelmark-tools refused=tests/data/refused_no_p.txt
    out="$root/out/demo"
    rm -rf "$out" && mkdir -p "$out"
    cd "$root"
    # Status 1 is the answer: the window does not open this file.
    "$tools" check "$refused" >"$out/check.txt" || [[ $? -eq 1 ]]
    "$tools" prepare "$refused" -o "$out/prepared.txt"
    "$tools" check "$out/prepared.txt" --quiet
    "$tools" plot examples/genome_100k.txt --label-hits --quiet -o "$out/plot.png"
    "$tools" hits examples/genome_100k.txt --quiet -o "$out/hits.tsv"
}

# The lone marker stands far above its neighbours, as one that was measured badly does.
workTheProgram() {
    play "$root/build/release/bin/pelmark_driven" "$scratch" <<END
shot 01-choose-a-file.png
open genome_100k.txt
shot 02-genome.png
drag 12@10 22 12@90 12
shot 03-box-on-a-chromosome.png
drop
shot 04-chromosome.png
drag -2000000 20.8 7000000 19
shot 05-box-on-a-lone-marker.png
drop
shot 06-lone-marker.png
keys Alt+R
shot 07-lone-marker-removed.png
drag 112500000 9.8 129700000 0
shot 08-box-on-a-peak.png
drop
shot 09-peak.png
keys Alt+U
shot 10-unzoomed.png
keys Alt+S
shot 11-name-the-table.png
name cleaned
keys Alt+E
END
}

report() {
    cat <<END

Pelmark was worked from open to save on examples/genome_100k.txt. The results are in

    $out

    01-*.png ... 11-*.png   the window at each step
    cleaned.txt             the saved table: $(tail -n +2 "$out/cleaned.txt" | wc -l) markers, one removed
    cleaned.png             the plot that was saved with it
    Pelmark_log.txt         what the program wrote to its log
    check.txt               why the window refuses tests/data/refused_no_p.txt
    prepared.txt            the same table, made by pelmark-tools prepare: the window opens it
    plot.png                examples/genome_100k.txt, drawn by pelmark-tools plot
    hits.tsv                its lead markers, listed by pelmark-tools hits
END
}

# Whatever happens: the results so far, nothing left running, no scratch folder.
endDemo() {
    local status=$?
    if [[ $status -ne 0 ]]; then
        echo "The demonstration did not come to its end. What there is of it: $out" >&2
    fi
    stopScreen
    find "$out" -type l -delete
    rm -rf "$scratch"
    exit "$status"
}

# The program works among links to the examples, as it would in examples/.
demo() {
    prepareRefused
    scratch=$(mktemp -d)
    trap endDemo EXIT
    ln -s "$root"/examples/*.txt "$out"
    cd "$out"
    startScreen 1280x1024 "$scratch"
    workTheProgram
    report
}
