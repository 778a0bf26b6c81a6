// An effect's editor, as far as the framework knows it: something that the effect owns and destroys.
// The toolkit's editor shell implements it.
#pragma once

namespace Orbel
{
class IEditor
{
public:
    virtual ~IEditor() = default;
};
}
