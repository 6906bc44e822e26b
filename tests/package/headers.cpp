// All that a program may include, from the installation: nothing in it may lead to a header that is
// not installed.
#include "ovik/api.h"
#include "ovik/api/ifc2x3.h"
#include "ovik/api/ifc4.h"
#include "ovik/ifc2x3.h"
#include "ovik/ifc4.h"
#include "ovik/ovik.h"
#include "ovik/parser.h"
