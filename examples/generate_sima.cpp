// Writes a large SIMA file of made-up data, the same for the same sizes and seed.
#include "sima/generator/sima_generator.h"

#include <CLI/CLI.hpp>

#include <fstream>
#include <iostream>
#include <string>

int main(int argc, char** argv) {
    CLI::App app("Writes a SIMA file of made-up points, lots, routes and results.", "generate_sima");
    fenmark::sima::GeneratorSizes sizes;
    std::string file;
    app.add_option("FILE", file, "File to write")->required();
    app.add_option("--points", sizes.points, "Coordinate points")->capture_default_str()->check(CLI::NonNegativeNumber);
    app.add_option("--lots", sizes.lots, "Lots of four points")->capture_default_str()->check(CLI::NonNegativeNumber);
    app.add_option("--routes", sizes.routes, "Routes, of the types 1 to 7 in turn")
        ->capture_default_str()
        ->check(CLI::NonNegativeNumber);
    app.add_option("--longitudinal", sizes.longitudinal, "H01 records for each route of type 2, 3 and 7")
        ->capture_default_str()
        ->check(CLI::NonNegativeNumber);
    app.add_option("--cross-sections", sizes.crossSections, "I01 records for each of these routes")
        ->capture_default_str()
        ->check(CLI::NonNegativeNumber);
    app.add_flag("--padded", sizes.padded, "Pad numbers, names and coordinates with blanks");
    app.add_option("--seed", sizes.seed, "Seed")->capture_default_str();
    app.footer("Example:\n  generate_sima million.sim --points 1000000 --lots 250000");
    CLI11_PARSE(app, argc, argv);

    std::ofstream out(file, std::ios::binary);
    fenmark::sima::generateSima(out, sizes);
    out.close();
    if (!out) {
        std::cerr << "generate_sima: " << file << " cannot be written\n";
        return 1;
    }
    return 0;
}
