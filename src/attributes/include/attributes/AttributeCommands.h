// The commands between block attributes and Object Data.
#pragma once

namespace zarvel {

// ZARVEL_ATTR_TEMPLATE: writes a starting attribute map for the selected
// references' blocks and the drawing's tables.
void commandAttrTemplate();
// ZARVEL_LOAD_ATTRS: attribute texts into the mapped columns, attaching a
// record of each mapped table that a reference lacks.
void commandLoadAttrs();
// ZARVEL_STORE_ATTRS: the mapped columns' values into attribute texts.
void commandStoreAttrs();

}  // namespace zarvel
