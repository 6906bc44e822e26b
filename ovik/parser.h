// The parser of physical files: scanner, parser, items and outputs.
#pragma once

#include "ovik/parser/fileoutput.h"
#include "ovik/parser/flexlexer.h"
#include "ovik/parser/items.h"
#include "ovik/parser/location.h"
#include "ovik/parser/output.h"
#include "ovik/parser/parsedstream.h"
#include "ovik/parser/parser.h"
#include "ovik/parser/scanner.h"
