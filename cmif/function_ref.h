// A reference to a callable, which must outlive it: two words, no heap.
#ifndef CMIF_FUNCTION_REF_H
#define CMIF_FUNCTION_REF_H

namespace cmif
{

template <typename Signature>
class FunctionRef;

template <typename Result, typename... Arguments>
class FunctionRef<Result(Arguments...)>
{
public:
    template <typename Callable>
    FunctionRef(const Callable &callable) // NOLINT(google-explicit-constructor): lambdas are passed
        : callable_(&callable), call_([](const void *self, Arguments... arguments) -> Result {
              return (*static_cast<const Callable *>(self))(arguments...);
          })
    {
    }

    Result operator()(Arguments... arguments) const { return call_(callable_, arguments...); }

private:
    const void *callable_;
    Result (*call_)(const void *, Arguments...);
};

} // namespace cmif

#endif
