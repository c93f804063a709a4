# Completion of the fenmark command line for fish. Installed as fenmark.fish among its completions.

function __fenmark_files -d 'Files that end in one of the extensions, and folders'
    set -f typed (commandline -ct)
    for path in (__fish_complete_path "$typed")
        set -f name (string split \t -- $path)[1]
        if string match -q '*/' -- $name
            echo $name
        else
            for extension in $argv
                string match -qi "*.$extension" -- $name; and echo $name
            end
        end
    end
end

function __fenmark_alignments -d 'The names of the alignments of the drawing that stands on the line'
    for word in (commandline -opc)
        if string match -qi '*.gpkg' -- $word
            fenmark info --alignments -- $word 2>/dev/null
            return
        end
    end
end

function __fenmark_is_argument -d 'Whether argument number N of one of the commands is typed, options not counted'
    set -f words (string match -v -- '-*' (commandline -opc))
    test (count $words) -eq (math $argv[1] + 1); and contains -- "$words[2]" $argv[2..-1]
end

complete -c fenmark -f
complete -c fenmark -n __fish_use_subcommand -a import -d 'Bring SIMA files into a drawing'
complete -c fenmark -n __fish_use_subcommand -a preview -d 'Count what a SIMA file holds'
complete -c fenmark -n __fish_use_subcommand -a info -d 'Sum up a drawing'
complete -c fenmark -n __fish_use_subcommand -a station -d 'Find the point at a station and an offset'
complete -c fenmark -n __fish_use_subcommand -a locate -d 'Find the station and the offset of a point'
complete -c fenmark -n __fish_use_subcommand -a stakes -d 'List points to set out'
complete -c fenmark -n __fish_use_subcommand -a report -d 'Write survey documents'
complete -c fenmark -n __fish_use_subcommand -a export -d 'Write a drawing in another format'
complete -c fenmark -n __fish_use_subcommand -a plot -d 'Draw a plan or sections'
complete -c fenmark -n __fish_use_subcommand -a help -d 'Tell the options of a command'
complete -c fenmark -n __fish_use_subcommand -l version -d 'Print the version'
complete -c fenmark -s h -l help -d 'Print help'
complete -c fenmark -n '__fenmark_is_argument 1 help' -a 'import preview info station locate stakes report export plot'
complete -c fenmark -n '__fish_seen_subcommand_from import' -a '(__fenmark_files sim)'
complete -c fenmark -n '__fenmark_is_argument 1 preview' -a '(__fenmark_files sim)'
complete -c fenmark -n '__fenmark_is_argument 1 info station locate stakes report export plot' -a '(__fenmark_files gpkg)'
complete -c fenmark -n '__fenmark_is_argument 2 station locate stakes' -a '(__fenmark_alignments)'
complete -c fenmark -n '__fenmark_is_argument 2 export' -a '(__fenmark_files dxf xml sim geojson kml csv)'
complete -c fenmark -n '__fenmark_is_argument 2 report' -a '(__fenmark_files html csv)'
complete -c fenmark -n '__fenmark_is_argument 2 plot' -a '(__fenmark_files svg pdf)'
complete -c fenmark -n '__fish_seen_subcommand_from import preview info station locate' -l json -d 'Print as JSON'
complete -c fenmark -n '__fish_seen_subcommand_from import preview report export plot' -s q -l quiet -d 'No notes'
complete -c fenmark -n '__fish_seen_subcommand_from info' -l alignments -d 'Names of the alignments alone'
complete -c fenmark -n '__fish_seen_subcommand_from import' -l drawing -d 'Drawing to write' -r -f -a "(__fenmark_files gpkg)"
complete -c fenmark -n '__fish_seen_subcommand_from import' -l site -d 'Site of the alignments' -x
complete -c fenmark -n '__fish_seen_subcommand_from import' -l point-layer -d 'Layer of the points' -x
complete -c fenmark -n '__fish_seen_subcommand_from import' -l ip-layer -d 'Layer of the IP lines' -x
complete -c fenmark -n '__fish_seen_subcommand_from import' -l lot-layer -d 'Layer of the lots' -x
complete -c fenmark -n '__fish_seen_subcommand_from import' -l stake-layer -d 'Layer of the width-stake lines' -x
complete -c fenmark -n '__fish_seen_subcommand_from import' -l continuous-layer -d 'Layer of the continuous lines' -x
complete -c fenmark -n '__fish_seen_subcommand_from import' -l shift -d 'Distance of vertical walls' -x
complete -c fenmark -n '__fish_seen_subcommand_from import' -l only -d 'These kinds alone' -x -a '(__fish_append , points lots longitudinal cross-sections ip main centre left-stake right-stake continuous continuous-curves)'
complete -c fenmark -n '__fish_seen_subcommand_from import' -l skip -d 'Leave these kinds out' -x -a '(__fish_append , points lots longitudinal cross-sections ip main centre left-stake right-stake continuous continuous-curves)'
complete -c fenmark -n '__fish_seen_subcommand_from import' -l alignment -d 'Alignment for results without one' -x -a '(__fenmark_alignments)'
complete -c fenmark -n '__fish_seen_subcommand_from import' -l create-layers -d 'Make named layers'
complete -c fenmark -n '__fish_seen_subcommand_from import' -l force-alignment -d 'Put all results on it'
complete -c fenmark -n '__fish_seen_subcommand_from import' -l plan-tangents -d 'Take tangents in plan'
complete -c fenmark -n '__fish_seen_subcommand_from import' -l replace -d 'Replace earlier imports of the file'
complete -c fenmark -n '__fish_seen_subcommand_from import' -l keep-partial -d 'Keep what was made'
complete -c fenmark -n '__fish_seen_subcommand_from import' -l strict -d 'Exit with 3 on errors'
complete -c fenmark -n '__fish_seen_subcommand_from import export' -l zone -d 'Plane rectangular zone' -x -a '(seq 19)'
complete -c fenmark -n '__fish_seen_subcommand_from import preview' -l encoding -d 'Encoding of the file' -x -a 'auto cp932 utf-8 utf-16'
complete -c fenmark -n '__fish_seen_subcommand_from import' -l positive-radius -d 'Sense of a positive radius' -x -a 'auto left right'
complete -c fenmark -n '__fish_seen_subcommand_from export' -l only -d 'These kinds alone' -x -a '(__fish_append , points lots alignments ip left-stake right-stake continuous longitudinal cross-sections others)'
complete -c fenmark -n '__fish_seen_subcommand_from export' -l layer -d 'This layer alone' -x
complete -c fenmark -n '__fish_seen_subcommand_from export' -l rectangle -d 'Two corners, X,Y,X,Y' -x
complete -c fenmark -n '__fish_seen_subcommand_from export' -l crs -d 'GeoJSON coordinates' -x -a 'lonlat plane'
complete -c fenmark -n '__fish_seen_subcommand_from export' -l dxf-version -d 'Release of DXF' -x -a 'R12 2000 2018'
complete -c fenmark -n '__fish_seen_subcommand_from export' -l layers -d 'Layers of DXF' -x -a 'kinds drawing'
complete -c fenmark -n '__fish_seen_subcommand_from export' -l elements -d 'An entity for each element'
complete -c fenmark -n '__fish_seen_subcommand_from export' -l columns -d 'SIMA in columns'
complete -c fenmark -n '__fish_seen_subcommand_from export' -l profile -d 'Profile of LandXML' -x -a 'landxml j-landxml'
complete -c fenmark -n '__fish_seen_subcommand_from export report plot' -l scale -d 'Scale, 1 to this' -x
complete -c fenmark -n '__fish_seen_subcommand_from stakes report' -l pitch -d 'Metres between two stakes' -x
complete -c fenmark -n '__fish_seen_subcommand_from stakes report' -l point-names -d 'Names of main points' -x -a 'ka btc'
complete -c fenmark -n '__fish_seen_subcommand_from stakes report' -l station-names -d 'Names of stations' -x -a 'stake kilometre'
complete -c fenmark -n '__fish_seen_subcommand_from stakes' -l every -d 'Distance between stakes' -x
complete -c fenmark -n '__fish_seen_subcommand_from stakes' -l at -d 'These stations' -x
complete -c fenmark -n '__fish_seen_subcommand_from stakes' -l offset -d 'Offsets' -x
complete -c fenmark -n '__fish_seen_subcommand_from stakes' -l main-points -d 'Main points and joints too'
complete -c fenmark -n '__fish_seen_subcommand_from stakes' -l format -d 'Format of the list' -x -a 'table csv sim json'
complete -c fenmark -n '__fish_seen_subcommand_from stakes' -l out -d 'File to write' -r -f -a "(__fenmark_files csv sim json txt)"
complete -c fenmark -n '__fish_seen_subcommand_from report' -l tables -d 'These tables alone' -x -a '(__fish_append , summary points lots main-points ips intermediate widths)'
complete -c fenmark -n '__fish_seen_subcommand_from report' -l sides -d 'Sides of lots' -x -a 'cut round'
complete -c fenmark -n '__fish_seen_subcommand_from report' -l land -d 'Category of the land' -x -a 'residential other'
complete -c fenmark -n '__fish_seen_subcommand_from report' -l log -d 'Log of an import' -r -f -a "(__fenmark_files log)"
complete -c fenmark -n '__fish_seen_subcommand_from plot' -l paper -d 'Size of the sheets' -x -a '(__fenmark_alignments)'
complete -c fenmark -n '__fish_seen_subcommand_from plot' -l along -d 'Sheets along it' -x -a '(__fenmark_alignments)'
complete -c fenmark -n '__fish_seen_subcommand_from plot' -l profile -d 'Longitudinal section of it' -x -a '(__fenmark_alignments)'
complete -c fenmark -n '__fish_seen_subcommand_from plot' -l cross-sections -d 'Cross-sections of it' -x -a '(__fenmark_alignments)'
