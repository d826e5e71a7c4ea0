uniform float4x4 world;
uniform float4x4 worldViewProj;
struct VS_INPUT{
	float3 position : POSITION;
	float3 normal : NORMAL;
};
struct VS_OUTPUT{
	float4 oProjPos : POSITION;
	float3 oWorldPos : TEXCOORD0;
	float3 oNormal : TEXCOORD1;
};
VS_OUTPUT main(VS_INPUT input){ 
	float3 iposition = input.position;
	float3 inormal = input.normal;
	VS_OUTPUT output;
	float4 localPosition = float4(iposition,1.0);
	float4 localNormal = float4(inormal,0.0);
	output.oProjPos = mul(localPosition,worldViewProj);
	float4 worldPosition = mul(localPosition,world);
	float4 worldNormal = mul(localNormal,world);
	output.oWorldPos = worldPosition.xyz;
	output.oNormal = worldNormal.xyz;
	return output;
}
