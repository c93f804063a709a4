// The C interface of one curve, and the texts of the statuses.
#include "curve/c_interface.h"
#include "curve/chain_status.h"

#include <vector>

using namespace fenmark::curve;

namespace {

// Writes a curve where it may be used.
int give(const Curve& curve, FmkCurve* out) {
    if (!isUsable(curve)) {
        return FMK_TOO_LARGE;
    }
    *out = recordOf(curve);
    return FMK_OK;
}

int give(const Pose& pose, FmkPose* out) {
    if (!isFinite(pose)) {
        return FMK_TOO_LARGE;
    }
    *out = recordOf(pose);
    return FMK_OK;
}

// The checks that every function of one curve begins with, then the body with the curve.
template <typename Body>
int withCurve(const FmkCurve* curve, const void* out, const Body& body) {
    if (curve == nullptr || out == nullptr) {
        return FMK_NO_POINTER;
    }
    const Curve value = valueOf(*curve);
    const int status = statusOf(value);
    return status != FMK_OK ? status : guarded([&] { return body(value); });
}

} // namespace

extern "C" {

const char* fmk_statusText(int status) {
    switch (status) {
    case FMK_OK:
        return "done";
    case FMK_COARSER:
        return "done; the line is coarser than the tolerance, since there is no room for more points";
    case FMK_INCOMPLETE:
        return "done; there is more than was found or than there is room for";
    case FMK_NO_POINTER:
        return "a pointer is null";
    case FMK_NOT_FINITE:
        return "a value is not a number, or infinite";
    case FMK_BAD_VALUE:
        return "a length, radius, parameter, tolerance or count is negative or too small";
    case FMK_TOO_LARGE:
        return "the answer lies beyond the range of doubles";
    case FMK_NO_SOLUTION:
        return "no curve of this kind does what is asked";
    case FMK_NO_TURN:
        return "the tangents lie on one line";
    case FMK_TOO_SHORT:
        return "the clothoids together turn more than the tangents do";
    case FMK_OVERLAP:
        return "the tangent lengths do not fit between neighbouring points";
    case FMK_OUT_OF_MEMORY:
        return "out of memory";
    default:
        return textOf(static_cast<ChainStatus>(status));
    }
}

int fmk_curvePose(const FmkCurve* curve, double along, FmkPose* pose) {
    return withCurve(curve, pose, [&](const Curve& value) {
        return std::isfinite(along) ? give(poseAt(value, along), pose) : FMK_NOT_FINITE;
    });
}

int fmk_curvePoses(const FmkCurve* curve, const double* along, size_t count, FmkPose* poses) {
    if (count == 0) {
        return FMK_OK;
    }
    if (along == nullptr) {
        return FMK_NO_POINTER;
    }
    return withCurve(curve, poses, [&](const Curve& value) {
        const PreparedCurve prepared(value);
        std::vector<FmkPose> found(count);
        for (std::size_t i = 0; i < count; ++i) {
            if (!std::isfinite(along[i])) {
                return static_cast<int>(FMK_NOT_FINITE);
            }
            const int status = give(prepared.poseAt(along[i]), &found[i]);
            if (status != FMK_OK) {
                return status;
            }
        }
        std::copy(found.begin(), found.end(), poses);
        return static_cast<int>(FMK_OK);
    });
}

int fmk_curveCurvature(const FmkCurve* curve, double along, double* curvature) {
    return withCurve(curve, curvature, [&](const Curve& value) {
        if (!std::isfinite(along)) {
            return FMK_NOT_FINITE;
        }
        const double k = value.length > 0.0 ? curvatureAt(value, along) : value.startCurvature;
        if (!std::isfinite(k)) {
            return FMK_TOO_LARGE;
        }
        *curvature = k;
        return FMK_OK;
    });
}

int fmk_curveParallelPose(const FmkCurve* curve, double along, double offset, FmkPose* pose) {
    return withCurve(curve, pose, [&](const Curve& value) {
        if (!std::isfinite(along) || !std::isfinite(offset)) {
            return static_cast<int>(FMK_NOT_FINITE);
        }
        return give(parallelPose(value, along, offset), pose);
    });
}

int fmk_wrapAzimuth(double azimuth, double* wrapped) {
    if (wrapped == nullptr) {
        return FMK_NO_POINTER;
    }
    if (!std::isfinite(azimuth)) {
        return FMK_NOT_FINITE;
    }
    *wrapped = wrappedAzimuth(azimuth);
    return FMK_OK;
}

int fmk_curvePart(const FmkCurve* curve, double from, double to, FmkCurve* out) {
    return withCurve(curve, out, [&](const Curve& value) {
        if (!std::isfinite(from) || !std::isfinite(to)) {
            return static_cast<int>(FMK_NOT_FINITE);
        }
        if (!(from >= 0.0 && from <= to && to <= value.length)) {
            return static_cast<int>(FMK_BAD_VALUE);
        }
        return give(part(value, from, to), out);
    });
}

int fmk_curveSplit(const FmkCurve* curve, double along, FmkCurve* first, FmkCurve* second) {
    if (second == nullptr) {
        return FMK_NO_POINTER;
    }
    return withCurve(curve, first, [&](const Curve& value) {
        if (!std::isfinite(along)) {
            return static_cast<int>(FMK_NOT_FINITE);
        }
        if (!(along >= 0.0 && along <= value.length)) {
            return static_cast<int>(FMK_BAD_VALUE);
        }
        const auto [low, high] = split(value, along);
        if (!isUsable(low)) {
            return static_cast<int>(FMK_TOO_LARGE);
        }
        const int status = give(high, second);
        return status == FMK_OK ? give(low, first) : status;
    });
}

int fmk_curveReversed(const FmkCurve* curve, FmkCurve* out) {
    return withCurve(curve, out, [&](const Curve& value) { return give(reversed(value), out); });
}

int fmk_curveMirroredAboutChord(const FmkCurve* curve, FmkCurve* mirrored) {
    return withCurve(curve, mirrored, [&](const Curve& value) { return give(mirroredAboutChord(value), mirrored); });
}

int fmk_curveMirroredAboutAxis(const FmkCurve* curve, const FmkPose* axis, FmkCurve* mirrored) {
    if (axis == nullptr) {
        return FMK_NO_POINTER;
    }
    return withCurve(curve, mirrored, [&](const Curve& value) {
        const Pose line = valueOf(*axis);
        return isFinite(line) ? give(mirroredAboutAxis(value, line), mirrored) : FMK_NOT_FINITE;
    });
}

int fmk_curveMoved(const FmkCurve* curve, const FmkPoint* about, double angle, const FmkPoint* shift, FmkCurve* out) {
    if (about == nullptr || shift == nullptr) {
        return FMK_NO_POINTER;
    }
    return withCurve(curve, out, [&](const Curve& value) {
        if (!isFinite(valueOf(*about)) || !isFinite(valueOf(*shift)) || !std::isfinite(angle)) {
            return static_cast<int>(FMK_NOT_FINITE);
        }
        return give(moved(value, valueOf(*about), angle, valueOf(*shift)), out);
    });
}

int fmk_curveParallel(const FmkCurve* curve, double offset, FmkCurve* parallel) {
    return withCurve(curve, parallel, [&](const Curve& value) {
        if (!std::isfinite(offset)) {
            return static_cast<int>(FMK_NOT_FINITE);
        }
        const auto found = parallelCurve(value, offset);
        return found ? give(*found, parallel) : static_cast<int>(FMK_NO_SOLUTION);
    });
}

int fmk_curveBox(const FmkCurve* curve, FmkBox* box) {
    return withCurve(curve, box, [&](const Curve& value) {
        const Box found = boxOf(value);
        if (!isFinite(Point{found.minX, found.minY}) || !isFinite(Point{found.maxX, found.maxY})) {
            return FMK_TOO_LARGE;
        }
        *box = {found.minX, found.minY, found.maxX, found.maxY};
        return FMK_OK;
    });
}

int fmk_curveLine(const FmkCurve* curve, double tolerance, double offset, FmkPoint* points, double* along, size_t room,
                  size_t* count, double* error) {
    if (count == nullptr) {
        return FMK_NO_POINTER;
    }
    return withCurve(curve, points, [&](const Curve& value) {
        if (!std::isfinite(tolerance) || !std::isfinite(offset)) {
            return FMK_NOT_FINITE;
        }
        if (!(tolerance > 0.0) || room < 2) {
            return FMK_BAD_VALUE;
        }
        const Line line = lineOf(value, tolerance, room, offset);
        for (const Point& point : line.points) {
            if (!isFinite(point)) {
                return FMK_TOO_LARGE;
            }
        }
        for (std::size_t i = 0; i < line.points.size(); ++i) {
            points[i] = recordOf(line.points[i]);
            if (along != nullptr) {
                along[i] = line.along[i];
            }
        }
        *count = line.points.size();
        if (error != nullptr) {
            *error = line.error;
        }
        return line.withinTolerance ? FMK_OK : FMK_COARSER;
    });
}

} // extern "C"
