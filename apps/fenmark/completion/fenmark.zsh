#compdef fenmark
# Completion of the fenmark command line for zsh. Installed as _fenmark in a folder of $fpath.

_fenmark_alignments() {
    # The names of the alignments of the drawing that stands on the line.
    local drawing=${(Q)words[(r)*.(#i)gpkg]}
    local -a names
    [[ -n $drawing ]] || return 1
    names=(${(f)"$(fenmark info --alignments -- ${~drawing} 2>/dev/null)"})
    compadd -a names
}

_fenmark() {
    local curcontext=$curcontext state line
    local -a kinds objects tables commands named drawing quiet json
    setopt localoptions extendedglob
    kinds=(points lots longitudinal cross-sections ip main centre left-stake right-stake continuous continuous-curves)
    objects=(points lots alignments ip left-stake right-stake continuous longitudinal cross-sections others)
    tables=(summary points lots main-points ips intermediate widths)
    commands=(
        'import:bring SIMA files into a drawing' 'preview:count what a SIMA file holds' 'info:sum up a drawing'
        'station:find the point at a station and an offset' 'locate:find the station and the offset of a point'
        'stakes:list points to set out' 'report:write survey documents' 'export:write a drawing in another format'
        'plot:draw a plan or sections' 'help:tell the options of a command')
    drawing='1:drawing:_files -g "*.(#i)gpkg"'
    quiet=('(-q --quiet)'{-q,--quiet}'[no notes]')
    json='--json[print as JSON]'
    named=(
        '--pitch[metres between two stakes]:metres:' '--point-names[names of main points]:names:(ka btc)'
        '--station-names[names of stations]:names:(stake kilometre)')

    _arguments -C '(- *)'{-h,--help}'[print help]' '(- *)--version[print the version]' '1:command:->command' '*::argument:->rest'
    case $state in
        command) _describe command commands ;;
        rest)
            case $words[1] in
                import)
                    _arguments '(-h --help)'{-h,--help}'[print help]' "$quiet[@]" "$json" \
                        '--drawing[drawing to write]:drawing:_files -g "*.(#i)gpkg"' '--site[site of the alignments]:site:' \
                        "*--only[these kinds alone]:kinds:_values -s , kind $kinds" "*--skip[leave these kinds out]:kinds:_values -s , kind $kinds" \
                        '--point-layer[layer of the points]:layer:' '--ip-layer[layer of the IP lines]:layer:' \
                        '--lot-layer[layer of the lots]:layer:' '--stake-layer[layer of the width-stake lines]:layer:' \
                        '--continuous-layer[layer of the continuous lines]:layer:' '--create-layers[make named layers]' \
                        '--shift[distance of vertical walls]:metres:' '--alignment[alignment for results without one]:alignment:_fenmark_alignments' \
                        '--force-alignment[put all results on it]' '--zone[plane rectangular zone]:zone:({1..19})' \
                        '--encoding[encoding of the files]:encoding:(auto cp932 utf-8 utf-16)' \
                        '--positive-radius[sense of a positive radius]:sense:(auto left right)' \
                        '--plan-tangents[take tangents in plan]' '--replace[replace earlier imports of the file]' \
                        '--keep-partial[keep what was made]' '--strict[exit with 3 on errors]' '*:file:_files -g "*.(#i)sim"' ;;
                preview)
                    _arguments '(-h --help)'{-h,--help}'[print help]' "$quiet[@]" "$json" \
                        '--encoding[encoding of the file]:encoding:(auto cp932 utf-8 utf-16)' '1:file:_files -g "*.(#i)sim"' ;;
                info) _arguments '(-h --help)'{-h,--help}'[print help]' "$json" '--alignments[names of the alignments alone]' "$drawing" ;;
                station)
                    _arguments '(-h --help)'{-h,--help}'[print help]' "$json" "$drawing" '2:alignment:_fenmark_alignments' '3:station:' '4:offset:' ;;
                locate)
                    _arguments '(-h --help)'{-h,--help}'[print help]' "$json" "$drawing" '2:alignment:_fenmark_alignments' '3:x:' '4:y:' ;;
                stakes)
                    _arguments '(-h --help)'{-h,--help}'[print help]' "$named[@]" "$drawing" '2:alignment:_fenmark_alignments' \
                        '--every[distance between stakes]:metres:' '--at[these stations]:stations:' '--offset[offsets]:metres:' \
                        '--main-points[main points and joints too]' '--format[format of the list]:format:(table csv sim json)' \
                        '--out[file to write]:file:_files -g "*.(#i)(csv|sim|json|txt)"' ;;
                report)
                    _arguments '(-h --help)'{-h,--help}'[print help]' "$quiet[@]" "$named[@]" "$drawing" \
                        "--tables[these tables alone]:tables:_values -s , table $tables" '--scale[scale of figures]:number:' \
                        '--sides[sides of lots]:sides:(cut round)' '--land[category of the land]:land:(residential other)' \
                        '*--log[log of an import]:log:_files -g "*.(#i)log"' '2:file:_files -g "*.(#i)(html|csv)"' ;;
                export)
                    _arguments '(-h --help)'{-h,--help}'[print help]' "$quiet[@]" "$drawing" \
                        "*--only[these kinds alone]:kinds:_values -s , kind $objects" '*--layer[this layer alone]:layer:' \
                        '--rectangle[two corners]:x,y,x,y:' '--zone[plane rectangular zone]:zone:({1..19})' \
                        '--crs[GeoJSON coordinates]:coordinates:(lonlat plane)' '--dxf-version[release of DXF]:release:(R12 2000 2018)' \
                        '--layers[layers of DXF]:layers:(kinds drawing)' '--elements[an entity for each element]' \
                        '--scale[scale of names]:number:' '--columns[SIMA in columns]' \
                        '--profile[profile of LandXML]:profile:(landxml j-landxml)' '2:file:_files -g "*.(#i)(dxf|xml|sim|geojson|kml|csv)"' ;;
                plot)
                    _arguments '(-h --help)'{-h,--help}'[print help]' "$quiet[@]" "$drawing" '--scale[scale]:number:' \
                        '--paper[size of the sheets]:paper:(A4 A3 A2 A1 A0)' '--along[sheets along it]:alignment:_fenmark_alignments' \
                        '--profile[longitudinal section of it]:alignment:_fenmark_alignments' \
                        '--cross-sections[cross-sections of it]:alignment:_fenmark_alignments' '2:file:_files -g "*.(#i)(svg|pdf)"' ;;
                help) _describe command commands ;;
            esac ;;
    esac
}

_fenmark "$@"
