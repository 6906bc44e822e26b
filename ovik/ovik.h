// Everything but schema classes and facade: values, entities, the model with reading and writing,
// its spatial structure, the log, and the comparison of files. A program adds `ovik/ifc2x3.h` or
// `ovik/ifc4.h`, or the header of each class that it uses.
#pragma once

#include "ovik/base/errlog.h"
#include "ovik/base/progressmeter.h"
#include "ovik/imp/base64guid.h"
#include "ovik/imp/entityid.h"
#include "ovik/imp/ifcentity.h"
#include "ovik/imp/ifcheader.h"
#include "ovik/imp/ifcmodel.h"
#include "ovik/imp/infiler.h"
#include "ovik/imp/loadreport.h"
#include "ovik/imp/logical.h"
#include "ovik/imp/outfiler.h"
#include "ovik/imp/result.h"
#include "ovik/imp/rtclass.h"
#include "ovik/imp/savereport.h"
#include "ovik/imp/schemaid.h"
#include "ovik/imp/utf8.h"
#include "ovik/imp/validation.h"
#include "ovik/imp/variant.h"
#include "ovik/imp/xbinary.h"
#include "ovik/imp/xstring.h"
#include "ovik/parser/parsedstream.h"
#include "ovik/spatial/ifcspatialstructure.h"
