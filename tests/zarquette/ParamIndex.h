#pragma once

// The effect's parameters by their own index (a host's reorder map aside), in
// a namespace of their own so that a test can take the names and nothing else.
namespace zq_test::params
{

enum Param
{
    tempo,
    bof,
    gauloises,
    nuke,
    oignons,
    vin_rouge
};

}  // namespace zq_test::params
