// A clothoid element as it lies: the way from a station to the standard clothoid and back to the calculation plane.
//
// Symbols: A parameter; L station on the standard clothoid, L1 that of the flatter end, T the element's length; s the
// distance from the flatter end; (X1, Y1) the standard point at the flatter end; theta the turn from the standard chord
// to the element's chord; tau = L^2 / (2 A^2).
// Axes: the standard clothoid has its origin at infinite radius, its tangent there along +x, and curves towards +y. An
// element that turns right is mirrored in the y axis first. Values named ...Calc are in the calculation plane.
#pragma once

#include "alignment/clothoid/series.h"
#include "fenmark/alignment/record.h"

namespace fenmark::alignment {

// Station to point on the standard clothoid. A station of at most the length step is the origin.
inline Point standardPointAt(double A, double L) {
    if (L <= kSameLength) {
        return {};
    }
    const double R = A * A / L;
    return clothoidPoint(A, A * A / (2.0 * R * R));
}

class LaidClothoid {
  public:
    // rec is in the survey plane. Not usable (see valid) when the element is shorter than the length step.
    explicit LaidClothoid(const Calelm& rec) : A_(rec.par), reversed_(flattensTowardsEnd(rec.r1, rec.r2)) {
        const double r1 = reversed_ ? rec.r2 : rec.r1;
        const double r2 = reversed_ ? rec.r1 : rec.r2;
        L1_ = standardStation(A_, r1);
        T_ = standardStation(A_, r2) - L1_;
        valid_ = T_ >= kSameLength && std::isfinite(T_) && std::isfinite(A_);
        if (!valid_) {
            return;
        }
        mirrored_ = (reversed_ ? -rec.dir : rec.dir) == -1.0;
        const double side = mirrored_ ? -1.0 : 1.0;
        start_ = {side * (reversed_ ? rec.ex : rec.sx), -(reversed_ ? rec.ey : rec.sy)};
        const Point finish{side * (reversed_ ? rec.sx : rec.ex), -(reversed_ ? rec.sy : rec.ey)};
        standardStart_ = clothoidPointAtRadius(A_, r1);
        standardEnd_ = clothoidPointAtRadius(A_, r2);
        // The turn by scalar and cross product of the two chords: one arc tangent, and no sine or cosine.
        const Point z{standardEnd_.x - standardStart_.x, standardEnd_.y - standardStart_.y};
        Point m{finish.x - start_.x, finish.y - start_.y};
        const double z2 = z.x * z.x + z.y * z.y;
        double m2 = m.x * m.x + m.y * m.y;
        if (m2 < kDirectionZero * kDirectionZero) {
            m = {1.0, 0.0}; // ends that are one point count as a chord along +x
            m2 = 1.0;
        }
        const double dot = z.x * m.x + z.y * m.y;
        const double cross = z.x * m.y - z.y * m.x;
        const double length = std::sqrt(z2 * m2);
        theta_ = std::atan2(cross, dot);
        if (std::fabs(theta_) < kSameAngle) {
            theta_ = 0.0;
            cosine_ = 1.0;
            sine_ = 0.0;
        } else {
            theta_ += theta_ < 0.0 ? kTwoPi : 0.0;
            cosine_ = dot / length;
            sine_ = cross / length;
        }
        valid_ = std::isfinite(start_.x + start_.y + finish.x + finish.y) &&
                 std::isfinite(standardEnd_.x + standardEnd_.y) && std::isfinite(cosine_ + sine_);
    }

    bool valid() const { return valid_; }
    bool reversed() const { return reversed_; }
    bool mirrored() const { return mirrored_; }
    double parameter() const { return A_; }
    double flatStation() const { return L1_; }
    double length() const { return T_; }
    Point standardStart() const { return standardStart_; }
    Point standardEnd() const { return standardEnd_; }

    // Standard station of a station counted from the element's own start, and back.
    double standardStationOf(double station) const { return reversed_ ? L1_ + (T_ - station) : L1_ + station; }
    double stationOf(double L) const { return reversed_ ? T_ - (L - L1_) : L - L1_; }

    // A standard point in the calculation plane.
    Point toCalc(Point local) const {
        const double dx = local.x - standardStart_.x;
        const double dy = local.y - standardStart_.y;
        const double x = start_.x + dx * cosine_ - dy * sine_;
        return {mirrored_ ? -x : x, start_.y + dx * sine_ + dy * cosine_};
    }

    // A direction of the frame of the standard clothoid in the calculation plane.
    Point directionToCalc(Point u) const {
        const double x = u.x * cosine_ - u.y * sine_;
        return {mirrored_ ? -x : x, u.x * sine_ + u.y * cosine_};
    }

    // A point of the calculation plane in the frame of the standard clothoid.
    Point toStandard(Point calc) const {
        const double dx = (mirrored_ ? -calc.x : calc.x) - start_.x;
        const double dy = calc.y - start_.y;
        return {standardStart_.x + dx * cosine_ + dy * sine_, standardStart_.y - dx * sine_ + dy * cosine_};
    }

    // Direction of travel at the standard station L, calculation plane: on the copy that runs from flat to sharp.
    double flatToSharpTangent(double L) const {
        double t = theta_ + L * L / (2.0 * A_ * A_);
        if (t >= kTwoPi) {
            t -= kTwoPi;
        }
        if (mirrored_) {
            t = kPi - t;
            if (t < 0.0) {
                t += kTwoPi;
            }
        }
        return t;
    }

    // The same in the element's own direction, brought to the survey plane.
    double surveyTangent(double L) const {
        double t = flatToSharpTangent(L);
        if (reversed_) {
            t += kPi;
            if (t >= kTwoPi) {
                t -= kTwoPi;
            }
        }
        return otherPlaneAngle(t);
    }

  private:
    double A_;
    bool reversed_;
    bool mirrored_ = false;
    bool valid_ = false;
    double L1_ = 0.0;
    double T_ = 0.0;
    double theta_ = 0.0;
    double cosine_ = 1.0;
    double sine_ = 0.0;
    Point start_; // flatter end, mirrored if the element is
    Point standardStart_;
    Point standardEnd_;
};

} // namespace fenmark::alignment
