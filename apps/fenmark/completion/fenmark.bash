# Completion of the fenmark command line for bash. Sourced from share/bash-completion/completions/fenmark.

_fenmark_files() {
    # Files that end in one of the given extensions, in any case, and folders.
    local pattern=$1 path
    COMPREPLY=()
    while IFS= read -r path; do
        if [[ -d $path ]]; then
            COMPREPLY+=("$path/")
        elif [[ ${path,,} == $pattern ]]; then
            COMPREPLY+=("$path")
        fi
    done < <(compgen -f -- "$cur")
    compopt -o filenames 2>/dev/null
}

_fenmark_alignments() {
    # The names of the alignments of the drawing that stands on the line.
    local word name drawing=
    COMPREPLY=()
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        [[ ${word,,} == *.gpkg ]] && drawing=${word//\\/}
    done
    [[ -n $drawing ]] || return
    while IFS= read -r name; do
        [[ $name == "${cur//\\/}"* ]] && COMPREPLY+=("$(printf %q "$name")")
    done < <("${COMP_WORDS[0]}" info --alignments -- "${drawing/#\~/$HOME}" 2>/dev/null)
}

_fenmark() {
    local cur=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} command=${COMP_WORDS[1]}
    local kinds="points lots longitudinal cross-sections ip main centre left-stake right-stake continuous continuous-curves"
    local objects="points lots alignments ip left-stake right-stake continuous longitudinal cross-sections others"
    [[ $command == export ]] && kinds=$objects
    COMPREPLY=()
    if [[ $COMP_CWORD -eq 1 ]]; then
        mapfile -t COMPREPLY < <(compgen -W "import preview info station locate stakes report export plot help --help --version" -- "$cur")
        return
    fi
    case $previous in
        --drawing) _fenmark_files "*.gpkg"; return ;;
        --only | --skip)
            mapfile -t COMPREPLY < <(compgen -P "${cur%"${cur##*,}"}" -W "$kinds" -- "${cur##*,}")
            compopt -o nospace 2>/dev/null
            return ;;
        --zone) mapfile -t COMPREPLY < <(compgen -W "$(echo {1..19})" -- "$cur"); return ;;
        --encoding) mapfile -t COMPREPLY < <(compgen -W "auto cp932 utf-8 utf-16" -- "$cur"); return ;;
        --positive-radius) mapfile -t COMPREPLY < <(compgen -W "auto left right" -- "$cur"); return ;;
        --crs) mapfile -t COMPREPLY < <(compgen -W "lonlat plane" -- "$cur"); return ;;
        --dxf-version) mapfile -t COMPREPLY < <(compgen -W "R12 2000 2018" -- "$cur"); return ;;
        --layers) mapfile -t COMPREPLY < <(compgen -W "kinds drawing" -- "$cur"); return ;;
        --layer | --rectangle) return ;;
        --point-names) mapfile -t COMPREPLY < <(compgen -W "ka btc" -- "$cur"); return ;;
        --station-names) mapfile -t COMPREPLY < <(compgen -W "stake kilometre" -- "$cur"); return ;;
        --format) mapfile -t COMPREPLY < <(compgen -W "table csv sim json" -- "$cur"); return ;;
        --sides) mapfile -t COMPREPLY < <(compgen -W "cut round" -- "$cur"); return ;;
        --land) mapfile -t COMPREPLY < <(compgen -W "residential other" -- "$cur"); return ;;
        --paper) mapfile -t COMPREPLY < <(compgen -W "A4 A3 A2 A1 A0" -- "$cur"); return ;;
        --out) _fenmark_files "*.@(csv|sim|json|txt)"; return ;;
        --log) _fenmark_files "*.log"; return ;;
        --tables)
            mapfile -t COMPREPLY < <(compgen -P "${cur%"${cur##*,}"}" \
                -W "summary points lots main-points ips intermediate widths" -- "${cur##*,}")
            compopt -o nospace 2>/dev/null
            return ;;
        --profile)
            if [[ $command == export ]]; then
                mapfile -t COMPREPLY < <(compgen -W "landxml j-landxml" -- "$cur")
            else
                _fenmark_alignments
            fi
            return ;;
        --along | --cross-sections | --alignment) _fenmark_alignments; return ;;
        --every | --at | --offset | --pitch | --scale) return ;;
        --site | --point-layer | --ip-layer | --lot-layer | --stake-layer | --continuous-layer | --shift) return ;;
    esac
    if [[ $cur == -* ]]; then
        local options="--help"
        case $command in
            import) options+=" --drawing --site --only --skip --point-layer --ip-layer --lot-layer --stake-layer
                               --continuous-layer --create-layers --shift --alignment --force-alignment --zone --encoding
                               --positive-radius --plan-tangents --replace --keep-partial --strict --json --quiet" ;;
            preview) options+=" --encoding --json --quiet" ;;
            info) options+=" --json --alignments" ;;
            station | locate) options+=" --json" ;;
            export) options+=" --only --layer --rectangle --zone --crs --dxf-version --layers --elements --scale
                               --columns --profile --quiet" ;;
            stakes) options+=" --every --at --offset --main-points --pitch --point-names --station-names --format --out" ;;
            report) options+=" --tables --scale --sides --land --pitch --point-names --station-names --log --quiet" ;;
            plot) options+=" --scale --paper --along --profile --cross-sections --quiet" ;;
        esac
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$cur")
        return
    fi
    case $command in
        import | preview) _fenmark_files "*.sim" ;;
        help) mapfile -t COMPREPLY < <(compgen -W "import preview info station locate stakes report export plot" -- "$cur") ;;
        info) _fenmark_files "*.gpkg" ;;
        station | locate | stakes)
            case $COMP_CWORD in
                2) _fenmark_files "*.gpkg" ;;
                3) _fenmark_alignments ;;
            esac ;;
        export)
            if [[ $COMP_CWORD -eq 2 ]]; then _fenmark_files "*.gpkg"; else _fenmark_files "*.@(dxf|xml|sim|geojson|kml|csv)"; fi ;;
        plot) if [[ $COMP_CWORD -eq 2 ]]; then _fenmark_files "*.gpkg"; else _fenmark_files "*.@(svg|pdf)"; fi ;;
        report) if [[ $COMP_CWORD -eq 2 ]]; then _fenmark_files "*.gpkg"; else _fenmark_files "*.@(html|csv)"; fi ;;
    esac
}

complete -F _fenmark fenmark
