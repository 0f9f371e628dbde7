#include "grid/store/pvGetCellText.h"

#include "grid/store/FormatNumber.h"

Text pvGetCellText(const GridValue& vValue, const clsCtlUniGrid_Column& oCol) {
    if (oCol.iType == 0) return vValue.toText();
    if (oCol.iType != 1) return {};
    return FormatNumber(vValue.toText(), {.sDecSep = oCol.sNumDecSep,
                                          .sValSep = oCol.sNumValSep,
                                          .fixInt = oCol.iNumFixInt,
                                          .fixDec = oCol.iNumFixDec,
                                          .bSgn = oCol.bNumSign,
                                          .bAutoDecSep = oCol.bNumAutoDecSep,
                                          .bAutoValSep = oCol.bNumAutoValSep});
}
