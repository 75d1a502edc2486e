#pragma once

#include "cls_profile.h"
#include "cls_property.h"
#include "tax_module.h"

namespace ledgix::model {

// What a purchase does to its owner's first year, in dollars a year.
struct FirstYear {
    double MC = 0;  // mortgage cost: all payments of the year
    double DC = 0;  // depreciation of the chattels
    double DH = 0;  // depreciation of the house
    double PT = 0;  // the property's taxable result; the whole mortgage cost, principal included, is deducted
    double S = 0;   // salary of the owner
    double TA = 0;  // income tax after the purchase
    double TB = 0;  // income tax before the purchase
    double R = 0;   // tax refund, TB - TA; negative when the property makes a taxable profit
    double SP = 0;  // the property's surplus after tax
    double SB = 0;  // the owner's surplus before the purchase
    double SA = 0;  // the owner's surplus after the purchase; SA - SB = SP
};

// Fills the property's yearly records with interest and principal, as MortgageCost does. Errors: those of MortgageCost
// and of `tax`.
FirstYear AnalyseFirstYear(clsProperty& property, const clsProfile& profile, const IncomeTaxFunction& tax);

}  // namespace ledgix::model
