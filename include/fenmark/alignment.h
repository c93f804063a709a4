/**
 * Fenmark alignment geometry library: straights, circular arcs and clothoids.
 *
 * This header takes in one header for each family of functions.
 */
#ifndef FENMARK_ALIGNMENT_H
#define FENMARK_ALIGNMENT_H

#include "fenmark/alignment/record.h"

#include "fenmark/alignment/conventions.h"
#include "fenmark/alignment/clothoid.h"
#include "fenmark/alignment/primitives.h"
#include "fenmark/alignment/construction.h"
#include "fenmark/alignment/walking.h"
#include "fenmark/alignment/movement.h"
#include "fenmark/alignment/intersection.h"
#include "fenmark/alignment/tangent.h"
#include "fenmark/alignment/chains.h"
#include "fenmark/alignment/compound.h"
#include "fenmark/alignment/ip.h"
#include "fenmark/alignment/point.h"

#endif
