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

_fenmark() {
    local cur=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} command=${COMP_WORDS[1]}
    local kinds="points lots longitudinal cross-sections ip main centre left-stake right-stake continuous continuous-curves"
    COMPREPLY=()
    if [[ $COMP_CWORD -eq 1 ]]; then
        mapfile -t COMPREPLY < <(compgen -W "import preview info station locate export plot --help --version" -- "$cur")
        return
    fi
    case $previous in
        --drawing) _fenmark_files "*.gpkg"; return ;;
        --only | --skip)
            mapfile -t COMPREPLY < <(compgen -P "${cur%"${cur##*,}"}" -W "$kinds" -- "${cur##*,}")
            compopt -o nospace 2>/dev/null
            return ;;
        --zone) mapfile -t COMPREPLY < <(compgen -W "$(echo {1..19})" -- "$cur"); return ;;
        --encoding) mapfile -t COMPREPLY < <(compgen -W "auto cp932 utf-8" -- "$cur"); return ;;
        --positive-radius) mapfile -t COMPREPLY < <(compgen -W "auto left right" -- "$cur"); return ;;
        --site | --point-layer | --ip-layer | --lot-layer | --stake-layer | --continuous-layer | --shift | --alignment)
            return ;;
    esac
    if [[ $cur == -* ]]; then
        local options="--help"
        case $command in
            import) options+=" --drawing --site --only --skip --point-layer --ip-layer --lot-layer --stake-layer
                               --continuous-layer --create-layers --shift --alignment --force-alignment --zone --encoding
                               --positive-radius --replace --keep-partial --strict --json --quiet" ;;
            preview) options+=" --encoding --json --quiet" ;;
            info | station | locate) options+=" --json" ;;
            export | plot) options+=" --quiet" ;;
        esac
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$cur")
        return
    fi
    case $command in
        import | preview) _fenmark_files "*.sim" ;;
        info | station | locate) [[ $COMP_CWORD -eq 2 ]] && _fenmark_files "*.gpkg" ;;
        export)
            if [[ $COMP_CWORD -eq 2 ]]; then _fenmark_files "*.gpkg"; else _fenmark_files "*.@(dxf|xml|geojson|csv)"; fi ;;
        plot) if [[ $COMP_CWORD -eq 2 ]]; then _fenmark_files "*.gpkg"; else _fenmark_files "*.svg"; fi ;;
    esac
}

complete -F _fenmark fenmark
