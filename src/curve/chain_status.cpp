// The statuses of chains in words.
#include "curve/chain_status.h"

namespace fenmark::curve {

const char* textOf(ChainStatus status) {
    switch (status) {
    case ChainStatus::Ok:
        return "done";
    case ChainStatus::NotFinite:
        return "a value is not a finite number, or the result would not be one";
    case ChainStatus::Empty:
        return "there is nothing to work on";
    case ChainStatus::Outside:
        return "the station lies beyond the ends";
    case ChainStatus::OutOfOrder:
        return "the stations do not rise";
    case ChainStatus::Overlap:
        return "two curves lie over each other";
    case ChainStatus::NoCurve:
        return "there is no such curve: a length or a radius is negative, or the curve does not fit";
    case ChainStatus::NotAnElement:
        return "a record is no straight, arc or clothoid, or contradicts itself";
    case ChainStatus::TooMany:
        return "there are more results than the room for them holds";
    case ChainStatus::NoMemory:
        return "there is not enough memory";
    case ChainStatus::NoObject:
        return "an argument is a null pointer";
    }
    return "unknown status";
}

} // namespace fenmark::curve
