// Seeded highways laid exactly, as the file that holds them, with the habits and the faults that files have.
#pragma once

#include "embedded/route_chains.h"

#include <cmath>
#include <random>
#include <string>
#include <vector>

namespace fenmark::host::embedded {

// What the file makes of the turning senses.
enum class Signs {
    PositiveLeft,
    PositiveRight,
    Slips, // positive is left, but for one curve in ten
    Random,
};

struct HighwayKind {
    Signs signs = Signs::PositiveLeft;
    double kinkShare = 0.0;   // of the joints where a straight and a curve meet
    bool kinksWithin = false; // also where curves meet
    bool shallow = false;     // with arcs of R 10,000 over 170 m
    bool arcFirst = false;
    double rise = 0.0; // of the heights from point to point, metres; without one there are no heights
    int curves = 12;
    int decimals = 3; // of the coordinates
};

class Highway {
  public:
    Highway(std::mt19937& random, const HighwayKind& kind) : random_(random), kind_(kind) {
        pose_ = {{uniform(-50000, 50000), uniform(-50000, 50000)}, uniform(-kPi, kPi)};
        if (kind.arcFirst) {
            add(arc(side() * radius(), uniform(40, 250)));
        }
        straightAhead();
        for (int i = 0; i < kind.curves; ++i) {
            addCurve();
            straightAhead();
        }
        writeFile();
    }

    std::vector<Element> chain; // as it is truly
    std::string file;           // as the file has it

  private:
    std::mt19937& random_;
    HighwayKind kind_;
    Pose pose_;

    double uniform(double low, double high) { return std::uniform_real_distribution(low, high)(random_); }
    bool chance(double share) { return uniform(0, 1) < share; }
    double side() { return chance(0.5) ? 1.0 : -1.0; }
    double radius() { return 10.0 * std::floor(uniform(25, 80.99)); }
    // A from R / 3 up to R, in steps of 5 m.
    double parameter(double radius) { return 5.0 * std::floor(uniform(radius / 3.0, radius) / 5.0); }

    void add(const Shape& shape) {
        if (kind_.kinksWithin) {
            kink();
        }
        chain.push_back(layChain(pose_, {shape})[0]);
        pose_ = {chain.back().end, chain.back().endDirection()};
    }
    void kink() {
        constexpr double kMostKink = 5.0 * 3.141592653589793 / 180.0;
        if (chance(kind_.kinkShare)) {
            pose_.direction += uniform(-kMostKink, kMostKink);
        }
    }
    void straightAhead() {
        kink();
        add(straight(uniform(50, 300)));
        kink();
    }
    void addBend(double turningRadius) {
        const double first = parameter(std::abs(turningRadius));
        const double last = parameter(std::abs(turningRadius));
        add(clothoid(0, turningRadius, first * first / std::abs(turningRadius)));
        add(arc(turningRadius, uniform(30, 300)));
        add(clothoid(turningRadius, 0, last * last / std::abs(turningRadius)));
    }
    void addEgg(double turn) {
        const double flat = 10.0 * std::floor(uniform(50, 80.99));
        const double sharp = 10.0 * std::floor(uniform(25, 40.99));
        const double between = parameter(sharp);
        const double lead = parameter(sharp);
        add(clothoid(0, turn * flat, lead * lead / flat));
        add(arc(turn * flat, uniform(30, 200)));
        add(clothoid(turn * flat, turn * sharp, between * between * (1 / sharp - 1 / flat)));
        add(arc(turn * sharp, uniform(30, 150)));
        add(clothoid(turn * sharp, 0, lead * lead / sharp));
    }
    void addCurve() {
        const double turn = side();
        if (kind_.shallow && chance(0.5)) {
            add(arc(turn * 10000, 170));
            return;
        }
        switch (random_() % 4) {
        case 0:
            addEgg(turn);
            return;
        case 1: // an S-curve
            addBend(turn * radius());
            addBend(-turn * radius());
            return;
        default:
            addBend(turn * radius());
        }
    }

    void writeFile() {
        file = "A00,\r\n";
        const auto addPoint = [&](std::size_t number, const PlanPoint& point) {
            const std::string height = kind_.rise == 0.0 ? "" : decimals(static_cast<double>(number) * kind_.rise, 3);
            file += "A01," + std::to_string(number) + ",p," + decimals(point.y, kind_.decimals) + "," +
                    decimals(point.x, kind_.decimals) + "," + height + ",\r\n";
        };
        for (std::size_t i = 0; i < chain.size(); ++i) {
            addPoint(i + 1, chain[i].start);
        }
        addPoint(chain.size() + 1, chain.back().end);
        file += "A99,\r\nF00,1,1,CL,3,\r\n";
        for (std::size_t i = 0; i < chain.size(); ++i) {
            file += "B01," + std::to_string(i + 1) + ",,\r\n" + curveRecord(chain[i]);
        }
        file += "B01," + std::to_string(chain.size() + 1) + ",,\r\nF99,\r\n";
    }
    std::string curveRecord(const Element& element) {
        if (element.type == ElementType::Straight) {
            return {};
        }
        bool positive = !element.clockwise;
        if (kind_.signs == Signs::PositiveRight || (kind_.signs == Signs::Slips && chance(0.1)) ||
            (kind_.signs == Signs::Random && chance(0.5))) {
            positive = !positive;
        }
        const auto signedRadius = [&](double value) {
            return std::isinf(value) ? std::string("0") : decimals(positive ? value : -value, 0);
        };
        if (element.type == ElementType::Arc) {
            return "C01,0," + signedRadius(element.startRadius) + ",\r\n";
        }
        const double growth = std::abs(1 / element.startRadius - 1 / element.endRadius) / element.length;
        return "C02," + decimals(std::sqrt(1 / growth), 0) + "," + signedRadius(element.startRadius) + "," +
               signedRadius(element.endRadius) + ",\r\n";
    }
};

} // namespace fenmark::host::embedded
