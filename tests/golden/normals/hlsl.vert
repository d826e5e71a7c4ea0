uniform float4x4 world;
uniform float4x4 worldViewProj;
struct VS_INPUT{
	float3 position : POSITION;
	float3 normal : NORMAL;
	float2 uv : TEXCOORD0;
	float4 tangent : TANGENT;
};
struct VS_OUTPUT{
	float4 oProjPos : POSITION;
	float3 oWorldPos : TEXCOORD0;
	float3 oNormal : TEXCOORD1;
	float2 oUV : TEXCOORD2;
	float4 oTangent : TEXCOORD3;
};
VS_OUTPUT main(VS_INPUT input){ 
	float3 iposition = input.position;
	float3 inormal = input.normal;
	float2 iuv = input.uv;
	float4 itangent = input.tangent;
	VS_OUTPUT output;
	float4 localPosition = float4(iposition,1.0);
	float4 localNormal = float4(inormal,0.0);
	output.oProjPos = mul(localPosition,worldViewProj);
	float4 worldPosition = mul(localPosition,world);
	float4 worldNormal = mul(localNormal,world);
	output.oWorldPos = worldPosition.xyz;
	output.oNormal = worldNormal.xyz;
	output.oUV = iuv;
	float4 worldTangent = mul(float4(itangent.xyz,0.0),world);
	output.oTangent = float4(worldTangent.xyz,itangent.w);
	return output;
}
