// Resource identifiers of the library's own resources.
#pragma once
