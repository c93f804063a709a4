// The C interface of the fitting functions.
#include "curve/c_interface.h"

#include <algorithm>
#include <cstring>
#include <vector>

using namespace fenmark::curve;

namespace {

int statusOf(FitStatus status) {
    switch (status) {
    case FitStatus::Done:
        return FMK_OK;
    case FitStatus::NotFinite:
        return FMK_NOT_FINITE;
    case FitStatus::BadValue:
        return FMK_BAD_VALUE;
    case FitStatus::NoTurn:
        return FMK_NO_TURN;
    case FitStatus::TooShort:
        return FMK_TOO_SHORT;
    case FitStatus::Overlap:
        return FMK_OVERLAP;
    case FitStatus::NoSolution:
        break;
    }
    return FMK_NO_SOLUTION;
}

FmkIpCurve recordOf(const IpCurve& curve) {
    FmkIpCurve record;
    std::memset(&record, 0, sizeof record); // the padding too: equal results compare equal
    record.status = statusOf(curve.status);
    record.turn = curve.turn;
    record.enterTangent = std::isfinite(curve.enterTangent) ? curve.enterTangent : 0.0;
    record.leaveTangent = std::isfinite(curve.leaveTangent) ? curve.leaveTangent : 0.0;
    record.count = std::min<std::size_t>(curve.curves.size(), 3);
    for (std::size_t i = 0; i < record.count; ++i) {
        record.curves[i] = fenmark::curve::recordOf(curve.curves[i]);
    }
    return record;
}

IpValues valueOf(const FmkIp& ip) {
    return {fenmark::curve::valueOf(ip.point), ip.radius, ip.enterA, ip.leaveA};
}

int give(const IpCurve& curve, FmkIpCurve* out) {
    const FmkIpCurve record = recordOf(curve);
    if (record.status == FMK_OK || record.status <= FMK_NO_SOLUTION) {
        *out = record;
    }
    return record.status;
}

} // namespace

extern "C" {

int fmk_fitG1(const FmkPose* from, const FmkPose* to, FmkCurve* curve) {
    if (from == nullptr || to == nullptr || curve == nullptr) {
        return FMK_NO_POINTER;
    }
    const Pose a = fenmark::curve::valueOf(*from);
    const Pose b = fenmark::curve::valueOf(*to);
    if (!isFinite(a) || !isFinite(b)) {
        return FMK_NOT_FINITE;
    }
    if (a.point == b.point) {
        return FMK_BAD_VALUE;
    }
    return guarded([&] {
        const auto fitted = fitG1(a, b);
        if (!fitted) {
            return FMK_TOO_LARGE;
        }
        *curve = fenmark::curve::recordOf(*fitted);
        return FMK_OK;
    });
}

int fmk_fitG2(const FmkPose* from, double fromCurvature, const FmkPose* to, double toCurvature, FmkCurve* curves) {
    if (from == nullptr || to == nullptr || curves == nullptr) {
        return FMK_NO_POINTER;
    }
    const Pose a = fenmark::curve::valueOf(*from);
    const Pose b = fenmark::curve::valueOf(*to);
    if (!isFinite(a) || !isFinite(b) || !std::isfinite(fromCurvature) || !std::isfinite(toCurvature)) {
        return FMK_NOT_FINITE;
    }
    if (a.point == b.point) {
        return FMK_BAD_VALUE;
    }
    return guarded([&] {
        const auto fitted = fitG2(a, fromCurvature, b, toCurvature);
        if (!fitted) {
            return FMK_NO_SOLUTION;
        }
        for (std::size_t i = 0; i < fitted->size(); ++i) {
            curves[i] = fenmark::curve::recordOf((*fitted)[i]);
        }
        return FMK_OK;
    });
}

int fmk_curveAtIp(const FmkPoint* before, const FmkIp* ip, const FmkPoint* after, FmkIpCurve* curve) {
    if (before == nullptr || ip == nullptr || after == nullptr || curve == nullptr) {
        return FMK_NO_POINTER;
    }
    return guarded([&] {
        return give(curveAtIp(fenmark::curve::valueOf(*before), valueOf(*ip), fenmark::curve::valueOf(*after)), curve);
    });
}

int fmk_curvesByIps(const FmkIp* points, size_t count, FmkIpCurve* ips, FmkCurve* curves, size_t room,
                    size_t* written) {
    if (points == nullptr || curves == nullptr || written == nullptr) {
        return FMK_NO_POINTER;
    }
    if (count < 2) {
        return FMK_BAD_VALUE;
    }
    return guarded([&] {
        std::vector<IpValues> values(count);
        std::transform(points, points + count, values.begin(), [](const FmkIp& ip) { return valueOf(ip); });
        if (!isFinite(values.front().point) || !isFinite(values.back().point)) {
            return static_cast<int>(FMK_NOT_FINITE);
        }
        const IpAlignment alignment = alignmentByIps(values);
        int status = alignment.done ? FMK_OK : FMK_BAD_VALUE;
        bool failed = false;
        for (std::size_t i = 0; i < alignment.ips.size(); ++i) {
            const FmkIpCurve record = recordOf(alignment.ips[i]);
            if (ips != nullptr) {
                ips[i] = record;
            }
            if (record.status != FMK_OK && !failed) {
                status = record.status;
                failed = true;
            }
        }
        if (status != FMK_OK) {
            return status;
        }
        if (alignment.curves.size() > room) {
            return static_cast<int>(FMK_BAD_VALUE);
        }
        std::transform(alignment.curves.begin(), alignment.curves.end(), curves,
                       [](const Curve& curve) { return fenmark::curve::recordOf(curve); });
        *written = alignment.curves.size();
        return static_cast<int>(FMK_OK);
    });
}

int fmk_curveThrough(const FmkPoint* before, const FmkPoint* ip, const FmkPoint* after, const FmkPoint* through,
                     double enterA, double leaveA, FmkIpCurve* curve) {
    if (before == nullptr || ip == nullptr || after == nullptr || through == nullptr || curve == nullptr) {
        return FMK_NO_POINTER;
    }
    return guarded([&] {
        return give(curveThrough(fenmark::curve::valueOf(*before), fenmark::curve::valueOf(*ip),
                                 fenmark::curve::valueOf(*after), fenmark::curve::valueOf(*through), enterA, leaveA),
                    curve);
    });
}

} // extern "C"
